#pragma once

#include "dialogs/fontchoice.h"

#include <QDialog>
#include <QFont>

class QFontDialog;
class QPushButton;

namespace Vantry::Dialogs {

// The font dialog: Qt's font chooser (face, style, size, underline) with a colour button
// beside it. What the user leaves alone comes back as it went in, so a selection of mixed
// faces or sizes keeps them unless the user picks one.
class FontDialog : public QDialog
{
    Q_OBJECT

public:
    FontDialog(const FontChoice &initial, QWidget *parent = nullptr);

    FontChoice choice() const;

    // The embedded chooser, for tests that play the user.
    QFontDialog *fontChooser() const { return m_fonts; }
    void setColor(const QColor &color);

private:
    void pickColor();

    FontChoice m_initial;
    QFont m_shown;
    QColor m_color;
    QFontDialog *m_fonts = nullptr;
    QPushButton *m_colorButton = nullptr;
};

} // namespace Vantry::Dialogs
