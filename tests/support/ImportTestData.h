#pragma once

// Shared by the import, backup and process-map tests (compiled without access control).

#include "BusFileDataManager.h"

#include <algorithm>

// The controller these tests import into: Modbus TCP and EtherNet/IP on,
// EtherCAT off; sizes differ per direction; groups on both buses.
inline void configureController(BusFileDataManager *manager)
{
    manager->busList = {{"ModbusTcpSlave", "mtcp", true},
                        {"EtherCatSlave", "ethcat", false},
                        {"EthernetIpSlave", "eip", true}};
    manager->busShortNames = QStringList{"mtcp", "ethcat", "eip"};
    // Places: bool in/out, int in/out, other types in/out, three per type.
    const int modbus[9] = {64, 32, 0, 16, 12, 0, 8, 8, 0};
    const int others[9] = {32, 32, 0, 8, 8, 0, 4, 4, 0};
    std::copy(modbus, modbus + 9, manager->busAddrNumInfo["ModbusUser"].variableLength);
    std::copy(others, others + 9, manager->busAddrNumInfo["EthernetIPUser"].variableLength);
    std::copy(others, others + 9, manager->busAddrNumInfo["EthercatUser"].variableLength);
    manager->curGroupTables[BusInput][0].insert("1", {"int", "1", "mtcp", "16", "31"});
    manager->curGroupTables[BusInput][1].insert("2", {"float", "2", "mtcp", "40", "47"});
    manager->curGroupTables[BusInput][2].insert("3", {"string", "3", "eip", "0", "7"});
    manager->curGroupTables[BusOutput][0].insert("4", {"int", "4", "mtcp", "8", "15"});
    manager->updateGroupData(true);
}
