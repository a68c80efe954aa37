#pragma once

#include <fieldbusconfig/BusFileDataManager.h>
#include <fieldbusconfig/ConfigCheck.h>
#include <fieldbusconfig/ConfigDiff.h>
#include <fieldbusconfig/FunctionIndex.h>

#include <QSet>
#include <QTranslator>
#include <QWidget>

#include <memory>

class ProgressBarWidget;
namespace pendantsim {
class FolderLock;
}
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;
class QTableWidget;
class QTableWidgetItem;
class QTreeWidget;
class QTreeWidgetItem;

// The pendant's fieldbus IO-mapping screen, built on the library the way every
// pendant screen is: it attaches itself as an observer, asks the manager for
// the files, and draws whatever the manager reports, on the GUI thread. It
// never waits: each answer arrives in onFileNotify.
class MappingScreen : public QWidget, public BusObserver
{
    Q_OBJECT

public:
    enum Language { English, Chinese };

    explicit MappingScreen(QWidget *parent = nullptr);
    ~MappingScreen() override;

    // Every file the screen asked for at start has been answered.
    bool isReady() const;
    // Swaps the screen's and the library's translators; the names of modules,
    // functions and buses follow.
    void setLanguage(Language language);
    Language language() const { return m_language; }

    void onFileNotify(FileHandle handle, const QString &fileKey, bool isSuccess) override;

signals:
    // Every file asked for at start has been answered and the check has run.
    void ready();

protected:
    void changeEvent(QEvent *event) override;

private:
    // One mapping direction: its table, the rows shown in it, and the line
    // that maps a function not mapped yet.
    struct Page
    {
        QTableWidget *table = nullptr;
        QVector<FuncAndMapInfo> rows;
        QComboBox *functions = nullptr;
        QLineEdit *address = nullptr;
        QPushButton *add = nullptr;
    };

    void buildUi();
    QWidget *buildPage(BiBo dir);
    void retranslateUi();
    void applyStyle();

    void showBuses();
    void showMappings();
    void showMapping(BiBo dir);
    void showFreeFunctions(BiBo dir);
    void showGroups();
    void runCheck();
    void showChanges();

    void addressEdited(BiBo dir, QTableWidgetItem *item);
    void addFunction(BiBo dir);
    void accept(BiBo dir, const FuncAndMapInfo &row);
    void save();
    // Why Save must not write now, or empty: the folder busy, the controller's
    // file changed since it was read, or lines its reader could not read back.
    QString saveRefusal();
    void findingSelected(QTreeWidgetItem *item);

    QString currentBus() const;
    QString moduleShown(const QString &module) const;
    // Through an index made for the listing: one walk of a module's list per
    // row makes a large table quadratic.
    QString functionShown(FunctionIndex &functions, const QString &module,
                          const QString &name) const;
    void setStatus(const QString &text, bool problem = false);

    BusFileDataManager *m = nullptr;
    Language m_language = English;
    QTranslator m_libraryTranslator;
    QTranslator m_screenTranslator;
    // Files answered since start; the screen is ready when all have been.
    QSet<QString> m_arrived;
    bool m_saving = false;
    // Held from the checks before a write to the answer of its send, so that
    // no other writer (fbcfg, another screen) changes the folder in between.
    std::unique_ptr<pendantsim::FolderLock> m_saveLock;
    // The mapping file as the tables were read from it (or last sent): Save
    // refuses when the controller's file is no longer this. The local copy
    // cannot serve, a failed send leaves the edits in it.
    QByteArray m_readMapping;
    QVector<CheckFinding> m_findings;

    ProgressBarWidget *m_progress = nullptr;
    QLabel *m_title = nullptr;
    QComboBox *m_languageBox = nullptr;
    QPushButton *m_saveButton = nullptr;
    QLabel *m_busesLabel = nullptr;
    QTreeWidget *m_busList = nullptr;
    QTabWidget *m_tabs = nullptr;
    Page m_pages[2];
    QTableWidget *m_groupTable = nullptr;
    QTreeWidget *m_changes = nullptr;
    QLabel *m_checkLabel = nullptr;
    QTreeWidget *m_checkPanel = nullptr;
    QLabel *m_status = nullptr;
};
