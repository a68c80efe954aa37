# Installs the build into a scratch prefix and builds a small outside project
# against the installed package, so that packaging cannot silently break.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "failed (${result}): ${ARGN}")
    endif()
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
# Only the public headers are installed, laid out as consumers include them.
file(GLOB_RECURSE installed RELATIVE ${prefix}/include ${prefix}/include/*.h)
list(SORT installed)
set(expected
    fieldbusconfig/BusFileDataManager.h fieldbusconfig/BusObserver.h fieldbusconfig/ConfigCheck.h
    fieldbusconfig/ConfigDiff.h
    fieldbusconfig/ConfigSnapshot.h fieldbusconfig/EditVerdict.h fieldbusconfig/FieldbusConfigGlobal.h
    fieldbusconfig/FieldbusConfigVersion.h fieldbusconfig/FieldbusNames.h
    fieldbusconfig/FieldbusPaths.h
    fieldbusconfig/FieldbusTypes.h fieldbusconfig/FunctionIndex.h fieldbusconfig/ImportReport.h fieldbusconfig/PendantSim.h
    fieldbusconfig/ProgressBarWidget.h
    fieldbusconfig/platform/DataAccess.h fieldbusconfig/platform/FlashFileClient.h
    fieldbusconfig/platform/MsgBox.h fieldbusconfig/platform/RbxInterface.h
    fieldbusconfig/platform/SysSettingApi.h)
if(NOT installed STREQUAL expected)
    message(FATAL_ERROR "installed headers differ:\n${installed}\nexpected:\n${expected}")
endif()

run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/package/consumer -B ${WORK_DIR}/build
    -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build -j2)
run(${WORK_DIR}/build/consumer)
run(${WORK_DIR}/build/core_consumer)

# What links Core alone must not load Qt Gui or Widgets.
foreach(program ${WORK_DIR}/build/core_consumer ${prefix}/bin/fbcfg)
    if(NOT EXISTS ${program})
        continue()
    endif()
    execute_process(COMMAND ldd ${program} OUTPUT_VARIABLE libraries RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "ldd ${program} failed (${result})")
    endif()
    if(libraries MATCHES "libQt5(Widgets|Gui)")
        message(FATAL_ERROR "${program} loads Qt Gui or Widgets:\n${libraries}")
    endif()
endforeach()
