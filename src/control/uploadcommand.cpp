#include "control/uploadcommand.h"

#include "control/settings.h"
#include "images/uploadflow.h"
#include "images/uploadrules.h"
#include "platform/prompts/userprompts.h"

#include <QEventLoop>

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
    if (!m_hooks.dialogs().imageUpload(values) || values.Cancel)
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

std::optional<UploadedImage> ImageUploadCommand::uploadInserted(const QString &localPath)
{
    if (isUploading()) {
        m_hooks.prompts().information(
            QStringLiteral("The image was not inserted: the last upload is still running."));
        return std::nullopt;
    }
    ImageUploadValues values = uploadValues(m_hooks.settings());
    values.FTP_AllowMultiableFiles = false;
    values.files = {localPath};
    if (!m_hooks.dialogs().imageUpload(values) || values.Cancel) {
        m_hooks.prompts().information(
            QStringLiteral("The image was not inserted: the upload was cancelled."));
        return std::nullopt;
    }
    if (!values.remotePaths.isEmpty())
        return UploadedImage{
            values.files.value(0), values.remotePaths.at(0), values.addresses.value(0)};
    if (values.files.isEmpty()) {
        m_hooks.prompts().information(
            QStringLiteral("The image was not inserted: no file was uploaded."));
        return std::nullopt;
    }

    UploadFlow flow(values);
    std::optional<UploadedImage> uploaded;
    QString error;
    QEventLoop loop;
    connect(&flow, &UploadFlow::imageUploaded, &loop,
        [&uploaded](const QString &local, const QString &remote, const QString &address) {
            if (!uploaded)
                uploaded = UploadedImage{local, remote, address};
        });
    connect(&flow, &UploadFlow::failed, &loop, [&error](const QString &message) {
        if (error.isEmpty())
            error = message;
    });
    connect(&flow, &UploadFlow::finished, &loop, &QEventLoop::quit);
    if (flow.upload({values.files.first()}, values.remoteFolder))
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!uploaded)
        m_hooks.prompts().critical(
            QStringLiteral("The image was not inserted. %1")
                .arg(error.isEmpty() ? QStringLiteral("The upload failed.") : error));
    return uploaded;
}

} // namespace Vantry::Images
