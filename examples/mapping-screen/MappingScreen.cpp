#include "MappingScreen.h"

#include <fieldbusconfig/ConfigSnapshot.h>
#include <fieldbusconfig/FieldbusNames.h>
#include <fieldbusconfig/PendantSim.h>
#include <fieldbusconfig/ProgressBarWidget.h>
#include <fieldbusconfig/platform/MsgBox.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>

namespace {

const QString ok = QStringLiteral("ok");
const QString funcListKey = QStringLiteral("funcList");
const QString groupTypes[] = {QStringLiteral("int"), QStringLiteral("float"),
                              QStringLiteral("string")};

enum Column { ModuleColumn, FunctionColumn, TypeColumn, AddressColumn, FilterColumn, InvertColumn };
enum Tab { InputTab = BusInput, OutputTab = BusOutput, GroupTab, ChangesTab };

// What the screen asks for at start; each is answered once, read or not.
const QStringList &startFiles()
{
    static const QStringList files{RDE_FIELDBUS_XML, RDE_FIELDBUS_CFG_XML, RDE_FUNC_INFO_XML,
                                   funcListKey,      RDE_SIGNAL_MAP_CFG,   RDE_GROUP_CFG};
    return files;
}

bool isGroupRow(const FuncAndMapInfo &row)
{
    return fieldbusnames::isGroupKey(row.fieldBus);
}

QTableWidgetItem *cell(const QString &text, bool editable = false)
{
    auto *item = new QTableWidgetItem(text);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable
                   | (editable ? Qt::ItemIsEditable : Qt::NoItemFlags));
    return item;
}

QTableWidget *table(int columns, QWidget *parent)
{
    auto *t = new QTableWidget(0, columns, parent);
    t->setSelectionBehavior(QAbstractItemView::SelectRows);
    t->setSelectionMode(QAbstractItemView::SingleSelection);
    t->verticalHeader()->hide();
    t->verticalHeader()->setDefaultSectionSize(22);
    t->horizontalHeader()->setStretchLastSection(true);
    t->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return t;
}

// A refused value keeps its place on the screen, in the colour of a fault.
const QColor refusedColor(0xc0, 0x39, 0x2b);

// The pendant's copy of the mapping file, just fetched or just sent.
QByteArray readLocalMapping()
{
    QFile file(TPU_SIGNAL_MAP_CFG);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Long file names lose their middle, never the line number at their end.
class MiddleElided : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideMiddle;
    }
};

} // namespace

MappingScreen::MappingScreen(QWidget *parent)
    : QWidget(parent)
    , m(BusFileDataManager::getInstance())
{
    buildUi();
    applyStyle();
    retranslateUi();

    // The files this screen hears about; notifications of others pass it by.
    setIsFieldXml(true);
    setIsFieldbusCfg(true);
    setIsFuncInfo(true);
    setIsFuncList(true);
    setIsSignalMap(true);
    setIsGroupIO(true);
    m->attach(this);

    // Up until every file has been answered; it closes itself at its maximum.
    m_progress->setRange(0, startFiles().size());
    m_progress->setValue(0);
    m_progress->show();

    // The function lists follow the function information by themselves. The
    // mapping file is fetched and read again: another screen may have saved it.
    m->setIsGetFuncList(true);
    m->setReadMapFileStatus(false);
    m->setGetSignalMapLoad(false);
    m->emitGetFieldXml();
    m->emitGetFieldbusCfg();
    m->emitGetFuncInfo();
    m->emitGetSignalMap();
    m->emitGetGroupIo();
}

MappingScreen::~MappingScreen()
{
    // The manager outlives every screen and must not call a dead one.
    m->detach(this);
}

bool MappingScreen::isReady() const
{
    return m_arrived.size() == startFiles().size();
}

void MappingScreen::buildUi()
{
    setObjectName(QStringLiteral("MappingScreen"));
    setFixedSize(800, 600); // the pendant's screen
    QFont small = font();
    small.setPixelSize(13);
    setFont(small);

    m_title = new QLabel(this);
    m_title->setObjectName(QStringLiteral("title"));
    m_languageBox = new QComboBox(this);
    m_languageBox->setObjectName(QStringLiteral("languageBox"));
    // Each language is named in itself, so the switch reads the same in both.
    m_languageBox->addItem(QStringLiteral("English"));
    m_languageBox->addItem(QStringLiteral("中文"));
    connect(m_languageBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this](int index) { setLanguage(Language(index)); });
    m_saveButton = new QPushButton(this);
    m_saveButton->setObjectName(QStringLiteral("saveButton"));
    m_saveButton->setEnabled(false);
    connect(m_saveButton, &QPushButton::clicked, this, &MappingScreen::save);
    auto *top = new QHBoxLayout;
    top->addWidget(m_title, 1);
    top->addWidget(m_languageBox);
    top->addWidget(m_saveButton);

    m_busesLabel = new QLabel(this);
    m_busList = new QTreeWidget(this);
    m_busList->setObjectName(QStringLiteral("busList"));
    m_busList->setColumnCount(3);
    m_busList->setRootIsDecorated(false);
    m_busList->setFixedWidth(250);
    m_busList->header()->resizeSection(0, 36);
    m_busList->header()->resizeSection(1, 60);
    connect(m_busList, &QTreeWidget::currentItemChanged, this, [this] {
        showMappings();
        showGroups();
    });
    auto *left = new QVBoxLayout;
    left->addWidget(m_busesLabel);
    left->addWidget(m_busList);

    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_tabs->addTab(buildPage(BusInput), QString());
    m_tabs->addTab(buildPage(BusOutput), QString());
    m_groupTable = table(5, this);
    m_groupTable->setObjectName(QStringLiteral("groupTable"));
    m_groupTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tabs->addTab(m_groupTable, QString());
    m_changes = new QTreeWidget(this);
    m_changes->setObjectName(QStringLiteral("changes"));
    m_changes->setColumnCount(2);
    m_changes->setRootIsDecorated(false);
    m_changes->header()->resizeSection(0, 24);
    m_tabs->addTab(m_changes, QString());
    auto *middle = new QHBoxLayout;
    middle->addLayout(left);
    middle->addWidget(m_tabs, 1);

    m_checkLabel = new QLabel(this);
    m_checkPanel = new QTreeWidget(this);
    m_checkPanel->setObjectName(QStringLiteral("checkPanel"));
    m_checkPanel->setColumnCount(3);
    m_checkPanel->setRootIsDecorated(false);
    m_checkPanel->setFixedHeight(120);
    m_checkPanel->header()->resizeSection(0, 70);
    m_checkPanel->setItemDelegateForColumn(1, new MiddleElided(m_checkPanel));
    connect(m_checkPanel, &QTreeWidget::currentItemChanged, this, &MappingScreen::findingSelected);

    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("statusLine"));
    // A refused Save names paths and lines and says what to do: all of it must show.
    m_status->setWordWrap(true);

    m_progress = new ProgressBarWidget(this);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(middle, 1);
    layout->addWidget(m_checkLabel);
    layout->addWidget(m_checkPanel);
    layout->addWidget(m_status);
}

QWidget *MappingScreen::buildPage(BiBo dir)
{
    auto *page = new QWidget(this);
    Page &p = m_pages[dir];
    const QString prefix = dir == BusInput ? QStringLiteral("input") : QStringLiteral("output");
    p.table = table(6, page);
    p.table->setObjectName(prefix + QStringLiteral("Table"));
    p.table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                             | QAbstractItemView::AnyKeyPressed);
    const int widths[] = {70, 140, 62, 60, 72};
    for (int column = ModuleColumn; column < InvertColumn; ++column)
        p.table->horizontalHeader()->resizeSection(column, widths[column]);
    connect(p.table, &QTableWidget::itemChanged, this,
            [this, dir](QTableWidgetItem *item) { addressEdited(dir, item); });

    p.functions = new QComboBox(page);
    p.functions->setObjectName(prefix + QStringLiteral("Functions"));
    p.address = new QLineEdit(page);
    p.address->setObjectName(prefix + QStringLiteral("Address"));
    p.address->setFixedWidth(70);
    p.add = new QPushButton(page);
    p.add->setObjectName(prefix + QStringLiteral("Add"));
    connect(p.add, &QPushButton::clicked, this, [this, dir] { addFunction(dir); });
    connect(p.address, &QLineEdit::returnPressed, this, [this, dir] { addFunction(dir); });

    auto *addLine = new QHBoxLayout;
    addLine->addWidget(p.functions, 1);
    addLine->addWidget(p.address);
    addLine->addWidget(p.add);
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(p.table);
    layout->addLayout(addLine);
    return page;
}

void MappingScreen::retranslateUi()
{
    setWindowTitle(tr("Fieldbus IO mapping"));
    m_title->setText(tr("Fieldbus IO mapping"));
    m_saveButton->setText(tr("Save"));
    m_busesLabel->setText(tr("Fieldbuses"));
    m_busList->setHeaderLabels({tr("On"), tr("Bus"), tr("Name")});
    m_tabs->setTabText(InputTab, tr("Input mapping"));
    m_tabs->setTabText(OutputTab, tr("Output mapping"));
    m_tabs->setTabText(GroupTab, tr("Groups"));
    const QStringList columns{tr("Module"),  tr("Function"),    tr("Type"),
                              tr("Address"), tr("Filter time"), tr("Invert")};
    for (Page &page : m_pages) {
        page.table->setHorizontalHeaderLabels(columns);
        page.address->setPlaceholderText(tr("Address"));
        page.add->setText(tr("Map"));
    }
    m_groupTable->setHorizontalHeaderLabels(
            {tr("Direction"), tr("Type"), tr("Group"), tr("First address"), tr("Last address")});
    m_changes->setHeaderLabels({QString(), tr("What Save sends")});
    m_checkPanel->setHeaderLabels({tr("Severity"), tr("File"), tr("Finding")});
    m_checkLabel->setText(tr("Configuration check"));
    m_progress->setTitle(tr("Reading the configuration files…"));
    // Names of modules, functions and buses, and the check's texts, follow the language.
    showBuses();
    if (isReady()) {
        runCheck();
        showChanges();
    }
}

void MappingScreen::applyStyle()
{
    // The pendant's two looks: style 1 is the dark one.
    const bool dark = m->isKestraVersion();
    QPalette palette = QApplication::style()->standardPalette();
    if (dark) {
        palette.setColor(QPalette::Window, QColor(0x2b, 0x2f, 0x36));
        palette.setColor(QPalette::WindowText, QColor(0xe6, 0xe6, 0xe6));
        palette.setColor(QPalette::Base, QColor(0x1f, 0x23, 0x29));
        palette.setColor(QPalette::AlternateBase, QColor(0x2b, 0x2f, 0x36));
        palette.setColor(QPalette::Text, QColor(0xe6, 0xe6, 0xe6));
        palette.setColor(QPalette::Button, QColor(0x3a, 0x40, 0x4a));
        palette.setColor(QPalette::ButtonText, QColor(0xe6, 0xe6, 0xe6));
        palette.setColor(QPalette::Highlight, QColor(0x2d, 0x7d, 0xd2));
    }
    setPalette(palette);
    setAutoFillBackground(true);
    m_title->setStyleSheet(QStringLiteral("font-size: 18px; font-weight: bold;"));
}

void MappingScreen::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslateUi();
    QWidget::changeEvent(event);
}

void MappingScreen::setLanguage(Language language)
{
    m_language = language;
    {
        const QSignalBlocker blocker(m_languageBox);
        m_languageBox->setCurrentIndex(language);
    }
    QCoreApplication::removeTranslator(&m_libraryTranslator);
    QCoreApplication::removeTranslator(&m_screenTranslator);
    // Both translations are built into the programs; installing one sends
    // LanguageChange, and changeEvent redraws the texts.
    if (language == Chinese
        && m_libraryTranslator.load(QStringLiteral(":/translations/fieldbusconfig_zh_CN.qm"))
        && m_screenTranslator.load(QStringLiteral(":/translations/fbcfg-screen_zh_CN.qm"))) {
        QCoreApplication::installTranslator(&m_libraryTranslator);
        QCoreApplication::installTranslator(&m_screenTranslator);
    }
    retranslateUi();
}

void MappingScreen::onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess)
{
    if (handle == FileWrittenAndSent) {
        if (fileKey != RDE_SIGNAL_MAP_CFG || !m_saving)
            return;
        m_saving = false;
        m_saveLock.reset();
        m_saveButton->setEnabled(true);
        m_progress->setValue(1); // the end of the range a save sets, which closes it
        if (!isSuccess) {
            // The edits stay in the working copy, so that Save can be tried again.
            const QString text = tr("Failed to send %1 to the controller!").arg(fileKey);
            setStatus(text, true);
            MsgBox box(ErrorMessage, text, OkButton, true, false, 0, false, false,
                       QStringLiteral("unchanged"), QStringLiteral("unchanged"),
                       QStringLiteral("unchanged"));
            return;
        }
        // The manager has committed the edits: the tables are the controller's file now.
        m_readMapping = readLocalMapping();
        setStatus(tr("Saved and sent to the controller."));
        showMappings();
        runCheck();
        showChanges();
        return;
    }

    if (!startFiles().contains(fileKey))
        return;
    m_arrived.insert(fileKey);
    if (fileKey == RDE_SIGNAL_MAP_CFG && isSuccess)
        m_readMapping = readLocalMapping();
    if (fileKey == RDE_FIELDBUS_XML)
        showBuses();
    else if (fileKey == RDE_GROUP_CFG)
        showGroups();
    else if (fileKey == RDE_SIGNAL_MAP_CFG || fileKey == funcListKey)
        showMappings();
    // A fetch that failed has shown the library's message box already.
    if (!isSuccess)
        setStatus(tr("Could not read %1.").arg(fileKey), true);
    if (!m_saving)
        m_progress->setValue(m_arrived.size());
    if (isReady()) {
        m_saveButton->setEnabled(true);
        runCheck();
        showChanges();
        emit ready();
    }
}

QString MappingScreen::currentBus() const
{
    const QTreeWidgetItem *item = m_busList->currentItem();
    return item ? item->data(1, Qt::UserRole).toString() : QString();
}

QString MappingScreen::moduleShown(const QString &module) const
{
    return m_language == Chinese ? m->getModuleNameEnCn(module, true) : module;
}

QString MappingScreen::functionShown(FunctionIndex &functions, const QString &module,
                                    const QString &name) const
{
    return functions.displayName(module, name, m_language == Chinese);
}

void MappingScreen::setStatus(const QString &text, bool problem)
{
    m_status->setText(text);
    m_status->setStyleSheet(problem ? QStringLiteral("color: %1;").arg(refusedColor.name())
                                    : QString());
}

void MappingScreen::showBuses()
{
    const QString selected = currentBus();
    QTreeWidgetItem *current = nullptr;
    {
        const QSignalBlocker blocker(m_busList);
        m_busList->clear();
        for (const BusName &bus : m->getBusNameList(false, false)) {
            auto *item = new QTreeWidgetItem(m_busList);
            // On and off are switched on the bus pages, not here.
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            item->setCheckState(0, bus.enable ? Qt::Checked : Qt::Unchecked);
            item->setText(1, bus.shortName);
            const QString chinese = m->getBusNameCn(bus.shortName.toLower());
            item->setText(2, m_language == Chinese && !chinese.isEmpty() ? chinese : bus.name);
            item->setData(1, Qt::UserRole, bus.shortName.toLower());
            if (!current || bus.shortName.toLower() == selected)
                current = item;
        }
        m_busList->setCurrentItem(current);
    }
    showMappings();
    showGroups();
}

void MappingScreen::showMappings()
{
    showMapping(BusInput);
    showMapping(BusOutput);
}

void MappingScreen::showMapping(BiBo dir)
{
    Page &page = m_pages[dir];
    const QString bus = currentBus();
    // The working copy, which the validators see too: accepted edits show before Save.
    QVector<FuncAndMapInfo> all;
    m->getBusSignalMap(dir, all);
    page.rows.clear();
    for (const FuncAndMapInfo &row : qAsConst(all)) {
        if (!bus.isEmpty() && fieldbusnames::busOfKey(row.fieldBus) == bus)
            page.rows.append(row);
    }
    // The bus's own addresses first, then its groups, each by number; rows
    // waiting for an address (-1) last.
    const auto order = [](const FuncAndMapInfo &row) {
        const int address = row.address.toInt();
        return std::make_tuple(isGroupRow(row), address < 0, address);
    };
    std::stable_sort(
            page.rows.begin(), page.rows.end(),
            [&](const FuncAndMapInfo &a, const FuncAndMapInfo &b) { return order(a) < order(b); });

    const QSignalBlocker blocker(page.table);
    page.table->setRowCount(page.rows.size());
    FunctionIndex functions(m);
    for (int i = 0; i < page.rows.size(); ++i) {
        const FuncAndMapInfo &row = page.rows.at(i);
        page.table->setItem(i, ModuleColumn, cell(moduleShown(row.module)));
        page.table->setItem(i, FunctionColumn, cell(functionShown(functions, row.module, row.name)));
        page.table->setItem(i, TypeColumn,
                            cell(isGroupRow(row) ? tr("%1 group").arg(row.type) : row.type));
        page.table->setItem(i, AddressColumn, cell(row.address, true));
        page.table->setItem(i, FilterColumn, cell(row.filterTime));
        page.table->setItem(i, InvertColumn, cell(row.invert));
    }
    page.table->setCurrentItem(nullptr);
    page.table->scrollToTop();
    showFreeFunctions(dir);
}

void MappingScreen::showFreeFunctions(BiBo dir)
{
    Page &page = m_pages[dir];
    QVector<FuncAndMapInfo> all;
    m->getBusSignalMap(dir, all);
    QSet<QString> mapped;
    for (const FuncAndMapInfo &row : qAsConst(all))
        mapped.insert(row.module + QLatin1Char('/') + row.name);

    page.functions->clear();
    FunctionIndex functions(m);
    for (const QString &shown : m->getModuleList()) {
        // The module list speaks the pendant's language; the tables use the English key.
        const QString module = m->isExistModule(shown) ? shown : m->getModuleNameEnCn(shown, false);
        for (const FuncAndMapInfo &f : m->getFuncList(module).value(dir)) {
            if (mapped.contains(module + QLatin1Char('/') + f.name))
                continue;
            page.functions->addItem(
                    QStringLiteral("%1: %2 (%3)")
                            .arg(moduleShown(module), functionShown(functions, module, f.name), f.type),
                    QStringList{module, f.name, f.type});
        }
    }
}

void MappingScreen::showGroups()
{
    const QString bus = currentBus();
    int count = 0;
    m_groupTable->setRowCount(0);
    for (const BiBo dir : {BusInput, BusOutput}) {
        for (const QString &type : groupTypes) {
            for (const GroupInfo &g : m->getBusGroupInfo(bus, dir, type, false)) {
                m_groupTable->setRowCount(count + 1);
                auto *direction = cell(dir == BusInput ? tr("Input") : tr("Output"));
                direction->setData(Qt::UserRole, int(dir));
                m_groupTable->setItem(count, 0, direction);
                m_groupTable->setItem(count, 1, cell(type));
                m_groupTable->setItem(count, 2, cell(g.address));
                m_groupTable->setItem(count, 3, cell(g.deviceMapHead));
                m_groupTable->setItem(count, 4, cell(g.deviceMapTail));
                ++count;
            }
        }
    }
}

void MappingScreen::addressEdited(BiBo dir, QTableWidgetItem *item)
{
    Page &page = m_pages[dir];
    if (item->column() != AddressColumn || item->row() >= page.rows.size())
        return;
    const FuncAndMapInfo &row = page.rows.at(item->row());
    const QString text = item->text().trimmed();
    if (text == row.address)
        return;
    // -1 takes the function off the bus.
    const EditVerdict verdict = text == QLatin1String("-1")
            ? m->canUnmapFunction(row.module, row.name, dir)
            : m->canMapFunction(row.module, row.name, dir, row.fieldBus, text);
    const QString why = verdict.text;
    if (!verdict.allowed()) {
        // Shown where it was typed and never written: the working copy keeps the old address.
        const QSignalBlocker blocker(page.table);
        item->setBackground(refusedColor);
        item->setToolTip(why);
        setStatus(why, true);
        return;
    }
    FuncAndMapInfo edited = row;
    edited.address = QString::number(text.toInt());
    accept(dir, edited);
}

void MappingScreen::addFunction(BiBo dir)
{
    Page &page = m_pages[dir];
    const QStringList f = page.functions->currentData().toStringList();
    if (f.size() != 3 || currentBus().isEmpty())
        return;
    FuncAndMapInfo row;
    row.module = f.at(0);
    row.name = f.at(1);
    row.type = f.at(2);
    row.fieldBus = currentBus();
    row.filterTime = QStringLiteral("0");
    row.invert = QStringLiteral("0");
    const QString text = page.address->text().trimmed();
    const EditVerdict verdict = m->canMapFunction(row.module, row.name, dir, row.fieldBus, text);
    const QString why = verdict.text;
    page.address->setStyleSheet(
            verdict.allowed()
                    ? QString()
                    : QStringLiteral("background: %1; color: white;").arg(refusedColor.name()));
    if (!verdict.allowed()) {
        setStatus(why, true);
        return;
    }
    row.address = QString::number(text.toInt());
    page.address->clear();
    accept(dir, row);
}

void MappingScreen::accept(BiBo dir, const FuncAndMapInfo &row)
{
    // Into the manager's working copy; Save writes and sends it.
    m->setMapInfo({row}, dir);
    showMapping(dir);
    FunctionIndex functions(m);
    const QString function = functionShown(functions, row.module, row.name);
    setStatus(row.address == QLatin1String("-1")
                      ? tr("%1 is no longer mapped; Save sends the change.").arg(function)
                      : tr("%1 is mapped to address %2; Save sends the change.")
                                .arg(function, row.address));
    for (int i = 0; i < m_pages[dir].rows.size(); ++i) {
        const FuncAndMapInfo &shown = m_pages[dir].rows.at(i);
        if (shown.module == row.module && shown.name == row.name)
            m_pages[dir].table->selectRow(i);
    }
    showChanges();
}

QString MappingScreen::saveRefusal()
{
    const QString folder = pendantsim::controllerRoot();
    m_saveLock = std::make_unique<pendantsim::FolderLock>(folder);
    // The GUI thread never waits: a busy folder is tried again by the user.
    if (!m_saveLock->tryLock(0))
        return tr("busy: %1 is being changed by %2; try again").arg(folder, m_saveLock->holder());
    // The edits were made against the file fetched at the start; a controller
    // file changed since (by fbcfg, say) would be overwritten without a word.
    // Under the lock nobody changes it before the send.
    const QString controllerFile = pendantsim::controllerFilePath(RDE_SIGNAL_MAP_CFG);
    QFile present(controllerFile);
    if (!present.open(QIODevice::ReadOnly) || present.readAll() != m_readMapping)
        return tr("%1 changed on the controller since this screen read it; open the screen "
                  "again to see the change, then redo the edits.")
                .arg(controllerFile);
    // The writer writes what the reader read: a line it could not read would
    // come back as another line. Checked on the file Save replaces, as it is now.
    const QVector<CheckFinding> blockers = ConfigCheck::writeBlockers(
            ConfigCheck::run(ConfigSnapshot::load(pendantsim::controllerRoot(),
                                                  ConfigSnapshot::ControllerLayout)),
            RDE_SIGNAL_MAP_CFG);
    QStringList lines;
    for (const CheckFinding &f : blockers)
        lines.append(f.line > 0 ? QStringLiteral("%1:%2").arg(controllerFile).arg(f.line)
                                : controllerFile);
    if (!lines.isEmpty())
        return tr("Nothing was saved: %1 cannot be written back as it stands (%2). Fix those "
                  "lines; fbcfg check shows every problem.")
                .arg(controllerFile, lines.join(QStringLiteral(", ")));
    return QString();
}

void MappingScreen::save()
{
    if (m_saving || !isReady())
        return;
    const QString refusal = saveRefusal();
    if (!refusal.isEmpty()) {
        m_saveLock.reset();
        setStatus(refusal, true);
        MsgBox box(ErrorMessage, refusal, OkButton, true, false, 0, false, false,
                   QStringLiteral("unchanged"), QStringLiteral("unchanged"),
                   QStringLiteral("unchanged"));
        return;
    }
    if (!m->writeSendSignalMapCfg(TPU_SIGNAL_MAP_CFG, RDE_SIGNAL_MAP_CFG)) {
        m_saveLock.reset();
        setStatus(tr("Cannot write the local copy of %1.").arg(RDE_SIGNAL_MAP_CFG), true);
        return;
    }
    // The manager's thread sends the file; its answer comes to onFileNotify.
    m_saving = true;
    m_saveButton->setEnabled(false);
    m_progress->setValue(0);
    m_progress->setRange(0, 1);
    m_progress->setTitle(tr("Sending the mapping to the controller…"));
    m_progress->show();
    setStatus(tr("Sending the mapping to the controller…"));
}

void MappingScreen::runCheck()
{
    // The pendant's local copies, the files the tables were read from.
    const QString local = QDir(TPU_FIELDBUS_DIR).absolutePath();
    m_findings = ConfigCheck::run(ConfigSnapshot::load(local, ConfigSnapshot::PendantLayout));
    // This screen fetches neither the slave device nor the descriptions.
    const QStringList notFetched{RDE_FBSLAVE_CFGX.mid(1), RDE_USER_DES_XML.mid(1),
                                 RDE_PFS_DES_XML.mid(1)};
    m_findings.erase(std::remove_if(m_findings.begin(), m_findings.end(),
                                    [&notFetched](const CheckFinding &f) {
                                        return f.kind == QLatin1String("file-missing")
                                                && notFetched.contains(f.file);
                                    }),
                     m_findings.end());
    const QSignalBlocker blocker(m_checkPanel);
    m_checkPanel->clear();
    for (int i = 0; i < m_findings.size(); ++i) {
        const CheckFinding &f = m_findings.at(i);
        auto *item = new QTreeWidgetItem(m_checkPanel);
        item->setText(0, f.severity == QLatin1String("error") ? tr("error") : tr("warning"));
        item->setToolTip(0, f.kind);
        // The file's name is enough on a pendant; the tooltip has the whole path.
        const QString name = f.file.section(QLatin1Char('/'), -1);
        item->setText(1, f.line > 0 ? QStringLiteral("%1:%2").arg(name).arg(f.line) : name);
        item->setToolTip(1, f.file);
        item->setText(2, f.message);
        item->setToolTip(2, QStringLiteral("%1 [%2]").arg(f.message, f.kind));
        item->setData(0, Qt::UserRole, i);
    }
    // As wide as the widest "file:line", up to half the panel.
    m_checkPanel->resizeColumnToContents(1);
    m_checkPanel->header()->resizeSection(
            1, qMin(m_checkPanel->header()->sectionSize(1), m_checkPanel->width() / 2));
    const int errors = ConfigCheck::errorCount(m_findings);
    m_checkLabel->setText(m_findings.isEmpty() ? tr("Configuration check: no problems found")
                                               : tr("Configuration check: %1 errors, %2 warnings")
                                                         .arg(errors)
                                                         .arg(m_findings.size() - errors));
}

void MappingScreen::showChanges()
{
    // What Save would send: the local copy as read, against the same copy with
    // the manager's working tables in place of its mapping.
    const QString local = QDir(TPU_FIELDBUS_DIR).absolutePath();
    const ConfigSnapshot saved = ConfigSnapshot::load(local, ConfigSnapshot::PendantLayout);
    ConfigSnapshot edited = saved;
    edited.mappings.clear();
    for (const BiBo dir : {BusInput, BusOutput}) {
        QVector<FuncAndMapInfo> rows;
        m->getBusSignalMap(dir, rows);
        for (const FuncAndMapInfo &row : qAsConst(rows)) {
            SnapshotMapping mapping;
            mapping.row = row;
            mapping.direction = dir;
            edited.mappings.append(mapping);
        }
    }
    const QVector<ConfigChange> changes = ConfigDiff::compare(saved, edited);
    m_changes->clear();
    for (const ConfigChange &change : changes) {
        auto *item = new QTreeWidgetItem(m_changes);
        item->setText(0, change.sign);
        // One side is empty for what is added or removed.
        const QString values = change.before.isEmpty() || change.after.isEmpty()
                ? change.before + change.after
                : tr("%1 → %2").arg(change.before, change.after);
        item->setText(1, change.subject + QStringLiteral(": ") + values);
        item->setToolTip(1, item->text(1));
    }
    m_tabs->setTabText(ChangesTab,
                       changes.isEmpty() ? tr("Changes") : tr("Changes (%1)").arg(changes.size()));
}

void MappingScreen::findingSelected(QTreeWidgetItem *item)
{
    if (!item)
        return;
    const CheckFinding &f = m_findings.at(item->data(0, Qt::UserRole).toInt());
    QString bus = f.bus.toLower();
    bus = fieldbusnames::busOfKey(bus);
    if (bus.isEmpty())
        return;
    const QList<QTreeWidgetItem *> buses = m_busList->findItems(bus, Qt::MatchFixedString, 1);
    if (buses.isEmpty()) {
        setStatus(tr("%1 is not in the bus list.").arg(f.bus), true);
        return;
    }
    m_busList->setCurrentItem(buses.constFirst());
    if (f.direction != BusInput && f.direction != BusOutput)
        return;

    if (f.file.endsWith(RDE_GROUP_CFG.section(QLatin1Char('/'), -1))) {
        m_tabs->setCurrentIndex(GroupTab);
        for (int i = 0; i < m_groupTable->rowCount(); ++i) {
            if (m_groupTable->item(i, 0)->data(Qt::UserRole).toInt() == f.direction
                && m_groupTable->item(i, 2)->text() == f.group)
                m_groupTable->selectRow(i);
        }
        return;
    }
    m_tabs->setCurrentIndex(f.direction);
    const Page &page = m_pages[f.direction];
    for (int i = 0; i < page.rows.size(); ++i) {
        const FuncAndMapInfo &row = page.rows.at(i);
        if (row.module == f.module && row.name == f.function && row.address == f.address) {
            page.table->selectRow(i);
            page.table->scrollToItem(page.table->item(i, ModuleColumn));
            return;
        }
    }
}
