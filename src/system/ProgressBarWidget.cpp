#include "ProgressBarWidget.h"

#include <QFont>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>

// The form as the designer would lay it out, kept in code so that no .ui file is needed.
struct ProgressBarWidget::Ui
{
    QGridLayout *gridLayout;
    QLabel *label;
    QProgressBar *progressBar;

    void setupUi(QWidget *form)
    {
        // A name given before our constructor ran (by the parent on ChildAdded) wins.
        if (form->objectName().isEmpty())
            form->setObjectName(QStringLiteral("ProgressBarWidget"));
        form->resize(500, 100);

        gridLayout = new QGridLayout(form);
        gridLayout->setObjectName(QStringLiteral("gridLayout"));

        label = new QLabel(form);
        label->setObjectName(QStringLiteral("label"));
        QFont font;
        font.setFamily(QStringLiteral("Ubuntu"));
        font.setWeight(50);
        font.setItalic(false);
        label->setFont(font);
        label->setStyleSheet(QStringLiteral("QLabel{\nfont: 18px \"Ubuntu\";\n}"));
        gridLayout->addWidget(label, 0, 0, 1, 1);

        progressBar = new QProgressBar(form);
        progressBar->setObjectName(QStringLiteral("progressBar"));
        progressBar->setMinimumSize(QSize(0, 32));
        progressBar->setValue(24);
        gridLayout->addWidget(progressBar, 1, 0, 1, 1);
    }
};

ProgressBarWidget::ProgressBarWidget(QWidget *parent)
    : QWidget(parent)
    , ui(new Ui)
{
    ui->setupUi(this);
    setWindowTitle(tr("Form"));
    ui->label->setText(tr("Reading the configuration file and initializing！"));
    QMetaObject::connectSlotsByName(this);

    initUI();
    initConnect();
}

ProgressBarWidget::~ProgressBarWidget()
{
    delete ui;
}

void ProgressBarWidget::initUI()
{
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setWindowModality(Qt::ApplicationModal);
    ui->progressBar->setValue(0);
    ui->progressBar->setAlignment(Qt::AlignCenter);
}

void ProgressBarWidget::initConnect()
{
    connect(ui->progressBar, &QProgressBar::valueChanged, this,
            &ProgressBarWidget::valueChangeSlot);
}

void ProgressBarWidget::setTitle(QString text)
{
    ui->label->setText(text);
}

void ProgressBarWidget::setRange(int minimum, int maximum)
{
    ui->progressBar->setRange(minimum, maximum);
}

void ProgressBarWidget::setValue(int value)
{
    ui->progressBar->setValue(value);
}

void ProgressBarWidget::setFormat(const QString &format)
{
    ui->progressBar->setFormat(format);
}

void ProgressBarWidget::valueChangeSlot(int value)
{
    if (value == ui->progressBar->maximum())
        close();
}
