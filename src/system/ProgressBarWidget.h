#pragma once

#include "FieldbusConfigGlobal.h"

#include <QWidget>

/// Modal, frameless caption and bar that a screen shows while configuration files are read;
/// it closes itself when the bar reaches its maximum.
///
/// A widget: make and use it on the GUI thread only.
class FIELDBUSCONFIG_EXPORT ProgressBarWidget : public QWidget
{
    Q_OBJECT

public:
    /// Lays out the caption (a translated "reading the configuration file"
    /// text) and the bar, then runs initUI() and initConnect().
    explicit ProgressBarWidget(QWidget *parent);
    virtual ~ProgressBarWidget();

    /// Window flags, modality, bar value and text alignment; the constructor applies them too.
    /// A dialog that stays on top and blocks the whole application; the bar starts at 0.
    void initUI();
    /// Connects the bar's value changes to the closing at its maximum; the constructor calls it.
    /// Each call adds one more connection, so the slot then runs once per connection.
    void initConnect();

    /// Replaces the caption above the bar.
    void setTitle(QString text);
    /// The bar's range; reaching `maximum` closes the widget.
    void setRange(int minimum, int maximum);
    /// Moves the bar; a value equal to the maximum closes the widget.
    void setValue(int value);
    /// The text shown on the bar, in the format QProgressBar::setFormat takes.
    void setFormat(const QString &format);

private slots:
    void valueChangeSlot(int value);

private:
    struct Ui;
    Ui *ui;
};
