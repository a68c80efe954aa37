#pragma once

#include "FieldbusConfigGlobal.h"

#include <QString>

/// @file
/// Where every fixed configuration file lies: locally on the pendant (TPU_,
/// under TPU_FIELDBUS_DIR) and on the controller (RDE_, absolute controller
/// paths). Constants, set when the library is loaded; any thread may read them.

/// The pendant's working folder, relative to its current directory: "../Application/fieldbus".
FIELDBUSCONFIG_EXPORT extern const QString TPU_FIELDBUS_DIR;

// Local (TPU_) and controller (RDE_) path of every fixed configuration file.
/// Local path of the fieldbus list, fieldbus.xml.
FIELDBUSCONFIG_EXPORT extern const QString TPU_FIELDBUS_XML;
/// Controller path of the fieldbus list, fieldbus.xml, under /application/fidbus.
FIELDBUSCONFIG_EXPORT extern const QString RDE_FIELDBUS_XML;
/// Local path of the function information file naming every module and its function list,
/// functionInfo.xml.
FIELDBUSCONFIG_EXPORT extern const QString TPU_FUNC_INFO_XML;
/// Controller path of the function information file naming every module and its function list,
/// functionInfo.xml, under /application/fidbus.
FIELDBUSCONFIG_EXPORT extern const QString RDE_FUNC_INFO_XML;
/// Local path of the signal mapping file, signal_mapping.cfg.
FIELDBUSCONFIG_EXPORT extern const QString TPU_SIGNAL_MAP_CFG;
/// Controller path of the signal mapping file, signal_mapping.cfg, under /application/fidbus.
FIELDBUSCONFIG_EXPORT extern const QString RDE_SIGNAL_MAP_CFG;
/// Local path of the backup of the signal mapping, signal_mapping_backup.cfg.
FIELDBUSCONFIG_EXPORT extern const QString TPU_SIGNAL_MAP_BACKUP_CFG;
/// Controller path of the backup of the signal mapping, signal_mapping_backup.cfg, under
/// /application/fidbus; an import sends one before it replaces the mapping.
FIELDBUSCONFIG_EXPORT extern const QString RDE_SIGNAL_MAP_BACKUP_CFG;
/// Local path of the group IO file, user_groupio.cfg.
FIELDBUSCONFIG_EXPORT extern const QString TPU_GROUP_CFG;
/// Controller path of the group IO file, user_groupio.cfg, under /application/fidbus.
FIELDBUSCONFIG_EXPORT extern const QString RDE_GROUP_CFG;
/// Local path of the fieldbus configuration file with the address areas, fieldbus_config.xml.
FIELDBUSCONFIG_EXPORT extern const QString TPU_FIELDBUS_CFG_XML;
/// Controller path of the fieldbus configuration file with the address areas, fieldbus_config.xml,
/// under /application/fidbus.
FIELDBUSCONFIG_EXPORT extern const QString RDE_FIELDBUS_CFG_XML;
/// Local path of the signal descriptions, user_description.xml.
FIELDBUSCONFIG_EXPORT extern const QString TPU_USER_DES_XML;
/// Controller path of the signal descriptions, user_description.xml, under /application/fidbus.
FIELDBUSCONFIG_EXPORT extern const QString RDE_USER_DES_XML;
/// Local path of the safety signal descriptions, pfs_description.xml.
FIELDBUSCONFIG_EXPORT extern const QString TPU_PFS_DES_XML;
/// Controller path of the safety signal descriptions, pfs_description.xml, under
/// /application/fidbus.
FIELDBUSCONFIG_EXPORT extern const QString RDE_PFS_DES_XML;
/// Local path of the slave device file with the byte order, fbslave.cfgx.
FIELDBUSCONFIG_EXPORT extern const QString TPU_FBSLAVE_CFGX;
/// Controller path of the slave device file with the byte order, fbslave.cfgx, under /fa.
FIELDBUSCONFIG_EXPORT extern const QString RDE_FBSLAVE_CFGX;
/// Local path of the controller configuration read for the safety option, controller_config.cfg.
FIELDBUSCONFIG_EXPORT extern const QString TPU_CONTROLLER_CFG;
/// Controller path of the controller configuration read for the safety option,
/// controller_config.cfg, under /fa.
FIELDBUSCONFIG_EXPORT extern const QString RDE_CONTROLLER_CFG;
