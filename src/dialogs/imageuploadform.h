#pragma once

#include <VantryHTMLEditor/EditorDialogs.h>

#include <QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace Vantry::Images {
class UploadFlow;
}

namespace Vantry::Dialogs {

// The ImageUpload form: the user browses the server's folders inside the restricted
// folder, picks image files and uploads them, watching each file's progress and the
// total, and may cancel at any moment. The transfer runs in the background, so the form
// keeps repainting and answering. The buttons call the public functions below, which
// tests call too.
class ImageUploadForm : public QDialog
{
    Q_OBJECT
public:
    ImageUploadForm(const ImageUploadValues &values, QWidget *parent = nullptr);
    ~ImageUploadForm() override;

    // What the user chose and what went up, in the values' fields.
    ImageUploadValues values() const { return m_values; }
    Images::UploadFlow &flow() const { return *m_flow; }
    QString status() const;
    QStringList files() const { return m_files; }

    void addFiles(const QStringList &paths);
    void removeFile(int row);
    // A subfolder's name, "..", or a path typed into the folder box.
    bool enterFolder(const QString &folder);
    bool startUpload();
    // Cancels a running transfer; closes the form when nothing runs.
    void cancelOrClose();

    void reject() override;

private:
    void chooseFiles();
    void showFolder(const QString &folder, const QStringList &folders);
    void showStatus(const QString &text, bool error);
    void onUploaded(const QString &localPath, const QString &remotePath, const QString &address);
    void onFinished(bool complete);
    void updateButtons();

    ImageUploadValues m_values;
    std::unique_ptr<Images::UploadFlow> m_flow;
    QStringList m_files;
    bool m_closeWhenDone = false;

    QLineEdit *m_txtFolder = nullptr;
    QListWidget *m_lstFolders = nullptr;
    QListWidget *m_lstFiles = nullptr;
    QPushButton *m_cmdAdd = nullptr;
    QPushButton *m_cmdRemove = nullptr;
    QPushButton *m_cmdUpload = nullptr;
    QPushButton *m_cmdCancel = nullptr;
    QProgressBar *m_prgFile = nullptr;
    QProgressBar *m_prgTotal = nullptr;
    QLabel *m_lblStatus = nullptr;
};

} // namespace Vantry::Dialogs
