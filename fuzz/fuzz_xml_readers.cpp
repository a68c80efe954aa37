// The XML files a screen reads, one target per file kind (chosen at build time):
// any bytes as the local copy, read without a crash, hang or runaway memory.
#include "FuzzHarness.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    BusFileDataManager &m = fuzz::manager();
    (void)m; // the slave-device reader is static
    const QByteArray input = fuzz::bytes(data, size);
#if defined(FUZZ_FIELDBUS_LIST)
    fuzz::put(TPU_FIELDBUS_XML, input);
    if (m.readFieldbusXml())
        m.parseFieldBusData(true, false);
#elif defined(FUZZ_FIELDBUS_CONFIG)
    fuzz::put(TPU_FIELDBUS_CFG_XML, input);
    m.readFieldbusCfg();
#elif defined(FUZZ_APP_PARAMETERS)
    fuzz::put(QStringLiteral("appParameters_en.xml"), input);
    fuzz::put(QStringLiteral("appParameters_cn.xml"), input);
    m.readAppParaXml();
#elif defined(FUZZ_USER_DESCRIPTIONS)
    fuzz::put(TPU_USER_DES_XML, input);
    m.readUserDes();
#elif defined(FUZZ_PFS_DESCRIPTIONS)
    fuzz::putOnController(RDE_PFS_DES_XML, input);
    QMap<QString, QString> inputs, outputs;
    m.getAndReadPfsDesc(inputs, outputs);
#elif defined(FUZZ_SLAVE_DEVICE)
    fuzz::putOnController(RDE_FBSLAVE_CFGX, input);
    QString endian;
    if (BusFileDataManager::getAndReadFbslave(endian))
        BusFileDataManager::writeAndSendFbslave(endian);
#elif defined(FUZZ_PV_IO)
    const QString path = TPU_FIELDBUS_DIR + QStringLiteral("/PV_layout.xml");
    fuzz::put(path, input);
    FuncAndMapInfo signal;
    signal.name = QStringLiteral("SignalA");
    m.writePVIoFile({signal}, path);
#elif defined(FUZZ_CONTROLLER_SCAN)
    fuzz::putOnController(RDE_CONTROLLER_CFG, input);
    BusFileDataManager::profiSafeStatus = -1;
    m.checkProfiSAFEStatus();
#elif defined(FUZZ_FUNCTION_FILES)
    // The input holds the function information, then after the first NUL a function list.
    const int split = input.indexOf('\0');
    const QString list = TPU_FIELDBUS_DIR + QStringLiteral("/weld/list.xml");
    fuzz::put(TPU_FUNC_INFO_XML, split < 0 ? input : input.left(split));
    fuzz::put(list, split < 0 ? QByteArray() : input.mid(split + 1));
    QStringList paths{list};
    if (m.readFuncInfoXml())
        m.readFuncListXml(paths);
    if (m.readFuncInfoXmlMonitor())
        m.readFuncListXmlMonitor(paths);
#else
#error "choose the file kind with FUZZ_<KIND>"
#endif
    return 0;
}
