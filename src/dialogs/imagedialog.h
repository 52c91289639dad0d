#pragma once

#include "dialogs/dialogwidgets.h"

#include <VantryHTMLEditor/ImageDialogValues.h>

#include <QDialog>
#include <QSize>

#include <memory>

class QCheckBox;
class QComboBox;
class QLabel;
class QNetworkAccessManager;
class QRadioButton;
class QTemporaryFile;

namespace Vantry::Dialogs {

// frmInsertImage: an image's source, size, spacing, alignment, border, text, link and
// roll-over behaviour.
class ImageDialog : public QDialog
{
public:
    ImageDialog(PromptsAccess prompts, QWidget *parent = nullptr);
    ~ImageDialog() override;

    void setValues(const ImageDialogValues &values);
    ImageDialogValues values() const;

    // Shows the picture the source names in the preview and learns its size for the kept
    // aspect. A web address is fetched into a temporary file of the dialog's own first.
    void LoadPic();
    // The size of the picture last loaded; invalid when none could be read.
    QSize pictureSize() const { return m_pictureSize; }

    FileField *source() const { return m_source; }
    NumberBox *width() const { return m_width; }
    NumberBox *height() const { return m_height; }
    QCheckBox *keepAspect() const { return m_keepAspect; }
    QLabel *rollOverLabel(int index) const { return m_rollOverLabels[index]; }
    void setRollOver(ImageDialogValues::RollOver mode);

private:
    void showPicture(const QString &file);
    void keepAspectFrom(bool widthChanged);

    ImageDialogValues m_values;
    FileField *m_source;
    QLabel *m_preview;
    NumberBox *m_width;
    NumberBox *m_height;
    QCheckBox *m_keepAspect;
    NumberBox *m_vspace;
    NumberBox *m_hspace;
    QComboBox *m_align;
    NumberBox *m_border;
    QLineEdit *m_alt;
    QComboBox *m_linkPrefix;
    QLineEdit *m_hyperlink;
    QComboBox *m_target;
    QRadioButton *m_modes[3];
    FileField *m_rollOver[3];
    QLabel *m_rollOverLabels[3];
    QSize m_pictureSize;
    bool m_syncing = false;
    QNetworkAccessManager *m_network = nullptr;
    std::unique_ptr<QTemporaryFile> m_download;
};

} // namespace Vantry::Dialogs
