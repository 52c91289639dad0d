#include "control/uploadcommand.h"

#include "control/settings.h"
#include "images/uploadflow.h"
#include "images/uploadrules.h"
#include "platform/prompts/userprompts.h"

namespace Vantry::Images {

ImageUploadValues uploadValues(const Control::Settings &settings)
{
    ImageUploadValues values;
    values.FTP_ServerName = settings.FTP_ServerName;
    values.FTP_UserName = settings.FTP_UserName;
    values.FTP_Password = settings.FTP_Password;
    values.FTP_InitialDir = settings.FTP_InitialDir;
    values.FTP_FileNamePrefix = settings.FTP_FileNamePrefix;
    values.FTP_FileNameSuffix = settings.FTP_FileNameSuffix;
    values.FTP_RistrictedDirectory = settings.FTP_RistrictedDirectory;
    values.FTP_AllowMultiableFiles = uploadSwitch(settings.FTP_AllowMultiableFiles);
    values.FTP_OverWriteFiles = uploadSwitch(settings.FTP_OverWriteFiles);
    values.FTP_IncermentExistingFileNames = uploadSwitch(settings.FTP_IncermentExistingFileNames);
    values.FTP_StripInvalidCharacters = uploadSwitch(settings.FTP_StripInvalidCharacters);
    values.BaseURL = settings.BaseURL;
    values.ImageVCDirectory = settings.ImageVCDirectory;
    return values;
}

ImageUploadCommand::ImageUploadCommand(Hooks hooks, QObject *parent)
    : QObject(parent)
    , m_hooks(std::move(hooks))
{ }

ImageUploadCommand::~ImageUploadCommand() = default;

bool ImageUploadCommand::isUploading() const
{
    return m_flow && m_flow->isBusy();
}

bool ImageUploadCommand::run()
{
    if (isUploading()) {
        m_hooks.prompts().information(QStringLiteral("The last upload is still running."));
        return false;
    }
    ImageUploadValues values = uploadValues(m_hooks.settings());
    if (!m_hooks.dialogs().imageUpload(values) || values.cancelled)
        return false;
    if (!values.remotePaths.isEmpty()) {
        for (qsizetype i = 0; i < values.remotePaths.size(); ++i)
            Q_EMIT imageUploaded(
                values.files.value(i), values.remotePaths.at(i), values.addresses.value(i));
        return false;
    }
    if (values.files.isEmpty())
        return false;

    m_flow = std::make_unique<UploadFlow>(values);
    connect(m_flow.get(), &UploadFlow::imageUploaded, this, &ImageUploadCommand::imageUploaded);
    connect(m_flow.get(), &UploadFlow::failed, this,
        [this](const QString &message) { m_hooks.prompts().critical(message); });
    connect(m_flow.get(), &UploadFlow::finished, this, &ImageUploadCommand::finished);
    m_flow->upload(values.files, values.remoteFolder);
    return false;
}

} // namespace Vantry::Images
