#pragma once

#include "dialogs/dialogwidgets.h"

#include <VantryHTMLEditor/StyleDialogValues.h>

#include <QDialog>

class QCheckBox;
class QComboBox;

namespace Vantry::Dialogs {

// frmFlashProperties: a Flash movie's file and player settings.
class FlashPropertiesDialog : public QDialog
{
public:
    FlashPropertiesDialog(PromptsAccess prompts, QWidget *parent = nullptr);

    void setValues(const FlashPropertiesValues &values);
    FlashPropertiesValues values() const;

    FileField *movieURL() const { return m_movieURL; }
    QCheckBox *play() const { return m_play; }

private:
    FlashPropertiesValues m_values;
    FileField *m_movieURL;
    QComboBox *m_quality;
    QComboBox *m_windowMode;
    QCheckBox *m_play;
    QCheckBox *m_loop;
    QCheckBox *m_showMenu;
    QCheckBox *m_deviceFont;
    QCheckBox *m_embedMovie;
    ColorField *m_bgColor;
};

} // namespace Vantry::Dialogs
