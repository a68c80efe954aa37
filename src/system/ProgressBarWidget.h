#pragma once

#include "FieldbusConfigGlobal.h"

#include <QWidget>

// Modal, frameless caption and bar that a screen shows while configuration files are read;
// it closes itself when the bar reaches its maximum.
class FIELDBUSCONFIG_EXPORT ProgressBarWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ProgressBarWidget(QWidget *parent);
    virtual ~ProgressBarWidget();

    // Window flags, modality, bar value and text alignment; the constructor applies them too.
    void initUI();
    // Each call adds one more connection, so the slot then runs once per connection.
    void initConnect();

    void setTitle(QString text);
    void setRange(int minimum, int maximum);
    void setValue(int value);
    void setFormat(const QString &format);

private slots:
    void valueChangeSlot(int value);

private:
    struct Ui;
    Ui *ui;
};
