# fbc_add_translation(TARGET TS_FILE): builds the Qt Linguist file into a .qm,
# embeds it in TARGET as the resource :/translations/<name>.qm, and installs
# the .qm for pendants that load their translators themselves.
find_package(Qt5LinguistTools REQUIRED)

function(fbc_add_translation target ts_file)
    get_filename_component(name ${ts_file} NAME_WE)
    set(out_dir ${PROJECT_BINARY_DIR}/translations)
    set_source_files_properties(${ts_file} PROPERTIES OUTPUT_LOCATION ${out_dir})
    qt5_add_translation(qm_file ${ts_file})
    set(qrc ${out_dir}/${name}.qrc)
    file(WRITE ${qrc}
         "<RCC><qresource prefix=\"/translations\"><file>${name}.qm</file></qresource></RCC>\n")
    set(cpp ${out_dir}/qrc_${name}.cpp)
    add_custom_command(OUTPUT ${cpp}
        COMMAND Qt5::rcc --name ${name} --output ${cpp} ${qrc}
        DEPENDS ${qm_file} ${qrc} VERBATIM)
    target_sources(${target} PRIVATE ${cpp})
    install(FILES ${qm_file} DESTINATION ${CMAKE_INSTALL_DATADIR}/fieldbusconfig/translations)
endfunction()
