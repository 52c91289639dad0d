#pragma once

#include "images/uploadrules.h"

#include <VantryHTMLEditor/EditorDialogs.h>

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace Vantry {
class UserPrompts;
}

namespace Vantry::Control {
struct Settings;
}

namespace Vantry::Images {

class UploadFlow;

// The form's values from the control's settings: the FTP_* switches become truth values.
ImageUploadValues uploadValues(const Control::Settings &settings);

// Command 14, `UploadImage`: opens the upload form through the editor's dialogs. When a
// host's dialog only chooses files and a folder, the files go up here, in the background.
// Every file that reaches the server is announced by imageUploaded.
class ImageUploadCommand : public QObject
{
    Q_OBJECT
public:
    struct Hooks
    {
        std::function<const Control::Settings &()> settings;
        std::function<EditorDialogs &()> dialogs;
        std::function<UserPrompts &()> prompts;
    };

    explicit ImageUploadCommand(Hooks hooks, QObject *parent = nullptr);
    ~ImageUploadCommand() override;

    // True when the document changed, which the upload itself never does.
    bool run();
    bool isUploading() const;
    // The image-insert command's upload (UploadImagesWhenInserted): the form opens with
    // localPath chosen, one file only. When a host's dialog only chooses, the file goes up
    // here while the window paints but takes no input; curl's stall limits bound the wait.
    // Nothing, the user told why, when no file reached the server.
    std::optional<UploadedImage> uploadInserted(const QString &localPath);

Q_SIGNALS:
    void imageUploaded(const QString &localPath, const QString &remotePath, const QString &address);
    // The background upload is over.
    void finished(bool complete);

private:
    Hooks m_hooks;
    std::unique_ptr<UploadFlow> m_flow;
};

} // namespace Vantry::Images
