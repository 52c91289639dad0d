#include "images/uploadflow.h"

#include "images/uploadrules.h"
#include "platform/curl/remotefiles.h"

#include <QFileInfo>

namespace Vantry::Images {

using Platform::RemoteError;

UploadFlow::UploadFlow(const ImageUploadValues &values, QObject *parent)
    : QObject(parent)
    , m_values(values)
{
    const std::optional<QString> root = uploadRoot(values.FTP_RistrictedDirectory);
    if (!root)
        m_settingsError = QStringLiteral("The restricted folder setting is not a valid folder.");
    else if (values.FTP_ServerName.trimmed().isEmpty())
        m_settingsError = QStringLiteral("No FTP server is set.");
    else if (!Platform::RemoteFiles::supports(values.FTP_ServerName))
        m_settingsError = QStringLiteral("This kind of server address is not supported.");
    m_root = root.value_or(QStringLiteral("/"));
    m_folder = startFolder(values.FTP_InitialDir, m_root);

    Platform::RemoteAccount account;
    account.server = values.FTP_ServerName;
    account.userName = values.FTP_UserName;
    account.password = values.FTP_Password;
    account.certificateAuthorities = values.certificateAuthorities;
    m_remote = std::make_unique<Platform::RemoteFiles>(std::move(account));
    connect(m_remote.get(), &Platform::RemoteFiles::listed, this, &UploadFlow::onListed);
    connect(m_remote.get(), &Platform::RemoteFiles::progress, this, &UploadFlow::onProgress);
    connect(m_remote.get(), &Platform::RemoteFiles::uploaded, this, &UploadFlow::onUploaded);
    connect(m_remote.get(), &Platform::RemoteFiles::finished, this, &UploadFlow::onFinished);
}

UploadFlow::~UploadFlow() = default;

void UploadFlow::fail(const QString &message)
{
    Q_EMIT failed(message);
}

bool UploadFlow::open()
{
    return browse(m_folder);
}

bool UploadFlow::browse(const QString &requested)
{
    if (!m_settingsError.isEmpty()) {
        fail(m_settingsError);
        return false;
    }
    if (isBusy())
        return false;
    const std::optional<QString> folder = resolveUploadFolder(m_root, m_folder, requested);
    if (!folder) {
        fail(QStringLiteral("Uploads may only go to %1 and the folders inside it.").arg(m_root));
        return false;
    }
    m_state = State::Listing;
    m_listing = *folder;
    m_remote->list(*folder);
    return true;
}

bool UploadFlow::upload(const QStringList &localFiles, const QString &folder)
{
    if (!m_settingsError.isEmpty()) {
        fail(m_settingsError);
        return false;
    }
    if (isBusy())
        return false;
    if (localFiles.isEmpty()) {
        fail(QStringLiteral("Choose the files to upload first."));
        return false;
    }
    if (localFiles.size() > 1 && !m_values.FTP_AllowMultiableFiles) {
        fail(QStringLiteral("Only one file can be uploaded at a time."));
        return false;
    }
    m_sizes.clear();
    m_total = 0;
    for (const QString &path : localFiles) {
        const QFileInfo info(path);
        if (!info.isFile() || !info.isReadable()) {
            fail(QStringLiteral("The file %1 could not be read.").arg(path));
            return false;
        }
        m_sizes.append(info.size());
        m_total += info.size();
    }
    const std::optional<QString> target
        = resolveUploadFolder(m_root, m_folder, folder.isEmpty() ? m_folder : folder);
    if (!target) {
        fail(QStringLiteral("Uploads may only go to %1 and the folders inside it.").arg(m_root));
        return false;
    }
    m_folder = *target;
    m_localFiles = localFiles;
    m_done = 0;
    // The names already in the folder decide the new ones.
    m_state = State::Naming;
    m_listing = m_folder;
    m_existing.clear();
    m_remote->list(m_folder);
    return true;
}

void UploadFlow::cancel()
{
    if (m_state == State::Idle || m_state == State::Cancelling)
        return;
    m_cancelledUpload = m_state != State::Listing;
    m_state = State::Cancelling;
    m_remote->cancel();
}

void UploadFlow::onListed(
    const QString &folder, const QStringList &folders, const QStringList &files)
{
    if (folder != m_listing)
        return;
    // Shown once the request is over, when the flow takes new requests again.
    if (m_state == State::Listing) {
        m_listedFolders = folders;
    } else if (m_state == State::Naming) {
        m_existing = QSet<QString>(files.cbegin(), files.cend());
        // A file cannot take a subfolder's name either.
        for (const QString &name : folders)
            m_existing.insert(name);
    }
}

void UploadFlow::startTransfer()
{
    const NameCollision rule
        = collisionRule(m_values.FTP_OverWriteFiles, m_values.FTP_IncermentExistingFileNames);
    QList<Platform::RemoteUpload> uploads;
    QSet<QString> taken = m_existing;
    for (const QString &local : std::as_const(m_localFiles)) {
        const QString wanted = remoteFileName(local, m_values.FTP_FileNamePrefix,
            m_values.FTP_FileNameSuffix, m_values.FTP_StripInvalidCharacters);
        const std::optional<QString> name = freeRemoteName(wanted, taken, rule);
        if (!name) {
            m_state = State::Idle;
            fail(rule == NameCollision::Refuse
                    ? QStringLiteral("A file named %1 is already in %2.").arg(wanted, m_folder)
                    : QStringLiteral("There is no free name for %1 in %2.").arg(wanted, m_folder));
            Q_EMIT finished(false);
            return;
        }
        uploads.append({local, remotePath(m_folder, *name), taken.contains(*name)});
        taken.insert(*name);
    }
    m_state = State::Uploading;
    Q_EMIT totalProgress(0, m_total);
    m_remote->upload(uploads);
}

void UploadFlow::onProgress(int index, qint64 sent, qint64 total)
{
    if (m_state != State::Uploading)
        return;
    Q_EMIT fileProgress(index, sent, total);
    Q_EMIT totalProgress(m_done + sent, m_total);
}

void UploadFlow::onUploaded(int index, const QString &path)
{
    if (m_state != State::Uploading || index >= m_localFiles.size())
        return;
    m_done += m_sizes.at(index);
    Q_EMIT totalProgress(m_done, m_total);
    Q_EMIT imageUploaded(m_localFiles.at(index), path,
        publishedAddress(m_values.BaseURL, m_values.ImageVCDirectory, m_root, path));
}

void UploadFlow::onFinished(RemoteError error, const QString &detail)
{
    const State state = m_state;
    m_state = State::Idle;
    if (state == State::Cancelling) {
        if (m_cancelledUpload)
            Q_EMIT failed(Platform::remoteErrorText(RemoteError::Cancelled));
        // A cancelled listing ends too: a form waiting to close or to take input again
        // hears it here.
        Q_EMIT finished(false);
        return;
    }
    if (error == RemoteError::None) {
        if (state == State::Listing) {
            m_folder = m_listing;
            m_folders = m_listedFolders;
            Q_EMIT folderListed(m_folder, m_folders);
        } else if (state == State::Naming)
            startTransfer();
        else if (state == State::Uploading)
            Q_EMIT finished(true);
        return;
    }
    QString message = Platform::remoteErrorText(error);
    if (error == RemoteError::Other && !detail.isEmpty())
        message += QLatin1Char(' ') + detail;
    fail(message);
    if (state == State::Naming || state == State::Uploading)
        Q_EMIT finished(false);
}

} // namespace Vantry::Images
