// The modal progress window that screens show while configuration files are read.
#include "ProgressBarWidget.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QtTest>

// Names an unnamed child as it is added, i.e. before the child's own constructor body runs
// (setWindowFlags adds it again later, which must not rename it).
class NamingParent : public QWidget
{
protected:
    void childEvent(QChildEvent *event) override
    {
        if (event->added() && event->child()->objectName().isEmpty())
            event->child()->setObjectName(QStringLiteral("preset"));
    }
};

class ProgressBarWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void builtForm()
    {
        ProgressBarWidget widget(nullptr);
        QCOMPARE(widget.objectName(), QStringLiteral("ProgressBarWidget"));
        QCOMPARE(widget.size(), QSize(500, 100));
        QCOMPARE(widget.windowTitle(), QStringLiteral("Form"));
        QVERIFY(widget.findChild<QGridLayout *>("gridLayout"));
        auto label = widget.findChild<QLabel *>("label");
        auto bar = widget.findChild<QProgressBar *>("progressBar");
        QVERIFY(label && bar);
        QCOMPARE(label->text(),
                 QString::fromUtf8("Reading the configuration file and initializing\uFF01"));
        QCOMPARE(label->styleSheet(), QStringLiteral("QLabel{\nfont: 18px \"Ubuntu\";\n}"));
        QCOMPARE(label->font().family(), QStringLiteral("Ubuntu"));
        QCOMPARE(bar->minimumSize(), QSize(0, 32));
        QCOMPARE(bar->value(), 0);
        QCOMPARE(int(bar->alignment()), 0x84);
        QCOMPARE(int(widget.windowFlags()), 0x40803);
        QCOMPARE(widget.windowModality(), Qt::ApplicationModal);
    }

    void presetObjectNameKept()
    {
        NamingParent parent;
        ProgressBarWidget widget(&parent);
        QCOMPARE(widget.objectName(), QStringLiteral("preset"));
    }

    void closesAtMaximum_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<bool>("visible");
        QTest::newRow("below") << 9 << true;
        QTest::newRow("maximum") << 10 << false;
        QTest::newRow("above is refused by the bar") << 11 << true;
    }
    void closesAtMaximum()
    {
        QFETCH(int, value);
        ProgressBarWidget widget(nullptr);
        widget.setRange(0, 10);
        widget.show();
        widget.setValue(value);
        QFETCH(bool, visible);
        QCOMPARE(widget.isVisible(), visible);
    }

    // initUI restores the construction settings; initConnect connects once more.
    void initAgain()
    {
        ProgressBarWidget widget(nullptr);
        auto bar = widget.findChild<QProgressBar *>("progressBar");
        widget.setWindowFlags(Qt::Window);
        widget.setValue(50);
        widget.initUI();
        QCOMPARE(int(widget.windowFlags()), 0x40803);
        QCOMPARE(bar->value(), 0);
        QCOMPARE(bar->receivers(SIGNAL(valueChanged(int))), 1);
        widget.initConnect();
        QCOMPARE(bar->receivers(SIGNAL(valueChanged(int))), 2);
    }
};

QTEST_MAIN(ProgressBarWidgetTest)
#include "tst_progressbarwidget.moc"
