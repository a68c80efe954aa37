#include "FieldbusPaths.h"

const QString TPU_FIELDBUS_DIR = QStringLiteral("../Application/fieldbus");

#define FBC_FILE_PATHS(name, file, rdeDir)                                                         \
    const QString TPU_##name = TPU_FIELDBUS_DIR + QStringLiteral("/" file);                        \
    const QString RDE_##name = QStringLiteral(rdeDir "/" file);

FBC_FILE_PATHS(FIELDBUS_XML, "fieldbus.xml", "/application/fidbus")
FBC_FILE_PATHS(FUNC_INFO_XML, "functionInfo.xml", "/application/fidbus")
FBC_FILE_PATHS(SIGNAL_MAP_CFG, "signal_mapping.cfg", "/application/fidbus")
FBC_FILE_PATHS(SIGNAL_MAP_BACKUP_CFG, "signal_mapping_backup.cfg", "/application/fidbus")
FBC_FILE_PATHS(GROUP_CFG, "user_groupio.cfg", "/application/fidbus")
FBC_FILE_PATHS(FIELDBUS_CFG_XML, "fieldbus_config.xml", "/application/fidbus")
FBC_FILE_PATHS(USER_DES_XML, "user_description.xml", "/application/fidbus")
FBC_FILE_PATHS(PFS_DES_XML, "pfs_description.xml", "/application/fidbus")
FBC_FILE_PATHS(FBSLAVE_CFGX, "fbslave.cfgx", "/fa")
FBC_FILE_PATHS(CONTROLLER_CFG, "controller_config.cfg", "/fa")
