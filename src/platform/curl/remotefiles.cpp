#include "platform/curl/remotefiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>
#include <QUrl>

#include <curl/curl.h>

#include <mutex>

namespace Vantry::Platform {

QString remoteErrorText(RemoteError error)
{
    switch (error) {
    case RemoteError::None:
        return {};
    case RemoteError::BadAddress:
        return QStringLiteral("The server address is not valid.");
    case RemoteError::NotSupported:
        return QStringLiteral("This kind of server address is not supported.");
    case RemoteError::CannotConnect:
        return QStringLiteral("Cannot connect to the server.");
    case RemoteError::LoginRefused:
        return QStringLiteral("The server refused the user name or password.");
    case RemoteError::NotSecure:
        return QStringLiteral("The server does not offer a secure connection.");
    case RemoteError::CertificateRejected:
        return QStringLiteral("The server's certificate could not be verified.");
    case RemoteError::HostKeyRejected:
        return QStringLiteral("The server's host key is not the one known for it. Check it, "
                              "and add it to ~/.ssh/known_hosts (for example by connecting "
                              "once with ssh).");
    case RemoteError::FolderNotAllowed:
        return QStringLiteral("The server does not allow this in that folder.");
    case RemoteError::ServerFull:
        return QStringLiteral("The server has no room for the file.");
    case RemoteError::ConnectionLost:
        return QStringLiteral("The connection to the server was lost.");
    case RemoteError::LocalFile:
        return QStringLiteral("The file could not be read.");
    case RemoteError::Cancelled:
        return QStringLiteral("The upload was cancelled.");
    case RemoteError::Other:
        break;
    }
    return QStringLiteral("The transfer failed.");
}

RemoteListing parseRemoteListing(const QByteArray &listing)
{
    RemoteListing result;
    const QList<QByteArray> lines = listing.split('\n');
    for (QByteArray line : lines) {
        line = line.trimmed();
        if (line.isEmpty())
            continue;
        const int space = line.indexOf(' ');
        const int equals = line.indexOf('=');
        if (equals > 0 && space > equals) {
            // MLSD: "type=dir;size=0;modify=...; name"
            const QString name = QString::fromUtf8(line.mid(space + 1));
            const QByteArray facts = line.left(space).toLower();
            if (facts.contains("type=dir;") || facts.startsWith("type=dir"))
                result.folders.append(name);
            else if (facts.contains("type=file"))
                result.files.append(name);
            continue;
        }
        // "drwxr-xr-x 2 user group 4096 Jan 01 12:00 name": the name is the ninth field.
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() < 9)
            continue;
        qsizetype at = 0;
        for (int field = 0; field < 8; ++field)
            at = line.indexOf(fields.at(field), at) + fields.at(field).size();
        const QString name = QString::fromUtf8(line.mid(at).trimmed());
        if (name == QLatin1String(".") || name == QLatin1String(".."))
            continue;
        if (line.startsWith('d'))
            result.folders.append(name);
        else if (line.startsWith('-'))
            result.files.append(name);
    }
    return result;
}

namespace {

void initialiseCurl()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

struct Endpoint
{
    QByteArray base; // "ftp://host:port", no path
    bool secure = false;
    bool sftp = false;
    RemoteError error = RemoteError::None;
};

Endpoint endpointOf(const QString &server)
{
    Endpoint endpoint;
    QString text = server.trimmed();
    if (!text.contains(QLatin1String("://")))
        text.prepend(QLatin1String("ftp://"));
    const QUrl url(text, QUrl::StrictMode);
    const QString scheme = url.scheme().toLower();
    if (!url.isValid() || url.host().isEmpty()) {
        endpoint.error = RemoteError::BadAddress;
        return endpoint;
    }
    if (scheme != QLatin1String("ftp") && scheme != QLatin1String("ftps")
        && scheme != QLatin1String("sftp")) {
        endpoint.error = RemoteError::NotSupported;
        return endpoint;
    }
    endpoint.secure = scheme == QLatin1String("ftps");
    endpoint.sftp = scheme == QLatin1String("sftp");
    QUrl base;
    base.setScheme(endpoint.sftp ? QStringLiteral("sftp") : QStringLiteral("ftp"));
    base.setHost(url.host());
    base.setPort(url.port());
    endpoint.base = base.toEncoded();
    return endpoint;
}

// path of the server as a URL path: percent-encoded segments, relative to the login
// folder for FTP and to the home folder for SFTP.
QByteArray urlPath(const Endpoint &endpoint, const QString &path, bool folder)
{
    QByteArray out = endpoint.sftp ? QByteArrayLiteral("/~") : QByteArray();
    const QStringList segments = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString &segment : segments)
        out += '/' + QUrl::toPercentEncoding(segment);
    if (folder || out.isEmpty())
        out += '/';
    return out;
}

// A command path for QUOTE, relative to the login folder: FTP sends it before changing
// folder, and an SFTP server resolves relative paths from the home folder. libcurl only
// reads an SFTP path with spaces when it is quoted, and takes no "~" inside quotes.
QByteArray quotePath(const Endpoint &endpoint, const QString &path)
{
    QString relative = path;
    while (relative.startsWith(QLatin1Char('/')))
        relative.remove(0, 1);
    if (!endpoint.sftp)
        return relative.toUtf8();
    relative.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    relative.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return '"' + relative.toUtf8() + '"';
}

QString folderOf(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

QString nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

RemoteError classify(CURLcode code, long response, bool connected)
{
    switch (code) {
    case CURLE_OK:
        return RemoteError::None;
    case CURLE_ABORTED_BY_CALLBACK:
        return RemoteError::Cancelled;
    case CURLE_UNSUPPORTED_PROTOCOL:
        return RemoteError::NotSupported;
    case CURLE_URL_MALFORMAT:
        return RemoteError::BadAddress;
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_COULDNT_CONNECT:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_SSL_CONNECT_ERROR:
        return connected ? RemoteError::ConnectionLost : RemoteError::CannotConnect;
    case CURLE_OPERATION_TIMEDOUT:
        return connected ? RemoteError::ConnectionLost : RemoteError::CannotConnect;
    case CURLE_LOGIN_DENIED:
        return RemoteError::LoginRefused;
    case CURLE_USE_SSL_FAILED:
        return RemoteError::NotSecure;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
        return RemoteError::CertificateRejected;
    case CURLE_REMOTE_DISK_FULL:
        return RemoteError::ServerFull;
    case CURLE_REMOTE_ACCESS_DENIED:
    case CURLE_REMOTE_FILE_NOT_FOUND:
    case CURLE_QUOTE_ERROR:
    case CURLE_FTP_COULDNT_RETR_FILE:
        return response == 530 ? RemoteError::LoginRefused : RemoteError::FolderNotAllowed;
    case CURLE_UPLOAD_FAILED:
        if (response == 452 || response == 552)
            return RemoteError::ServerFull;
        if (response == 426 || response == 451 || response == 421)
            return RemoteError::ConnectionLost;
        return RemoteError::FolderNotAllowed;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_FTP_ACCEPT_FAILED:
    case CURLE_FTP_ACCEPT_TIMEOUT:
    case CURLE_FTP_CANT_GET_HOST:
    case CURLE_FTP_WEIRD_PASV_REPLY:
    case CURLE_FTP_WEIRD_227_FORMAT:
        return RemoteError::ConnectionLost;
    case CURLE_READ_ERROR:
        return RemoteError::LocalFile;
    default:
        return RemoteError::Other;
    }
}

struct CurlHandle
{
    CURL *curl = curl_easy_init();
    curl_slist *quote = nullptr;
    char errorText[CURL_ERROR_SIZE] = {};
    CurlHandle() = default;
    Q_DISABLE_COPY_MOVE(CurlHandle)
    ~CurlHandle()
    {
        curl_slist_free_all(quote);
        curl_easy_cleanup(curl);
    }
};

} // namespace

class RemoteFiles::Worker : public QObject
{
public:
    Worker(RemoteFiles *owner, RemoteAccount account,
        std::shared_ptr<std::atomic<quint64>> cancelGeneration)
        : m_owner(owner)
        , m_account(std::move(account))
        , m_endpoint(endpointOf(m_account.server))
        , m_cancelGeneration(std::move(cancelGeneration))
    { }

    void list(const QString &folder, quint64 generation);
    void upload(const QList<RemoteUpload> &files, quint64 generation);

private:
    struct Outcome
    {
        RemoteError error = RemoteError::None;
        QString detail;
    };

    struct Transfer
    {
        Worker *worker = nullptr;
        quint64 generation = 0;
        int index = -1;
        QFile *file = nullptr;
        QByteArray received;
        QElapsedTimer sinceProgress;
    };

    bool cancelled(quint64 generation) const { return *m_cancelGeneration != generation; }
    void prepare(CurlHandle &handle, const QByteArray &url, Transfer &transfer);
    Outcome perform(CurlHandle &handle, quint64 generation);
    Outcome runList(
        const QString &folder, bool plainList, RemoteListing &listing, quint64 generation);
    Outcome runUpload(int index, const RemoteUpload &file, quint64 generation);
    void removeQuietly(const QString &path);
    QString scrub(QString text) const;

    static size_t writeData(char *data, size_t size, size_t count, void *user);
    static size_t readData(char *data, size_t size, size_t count, void *user);
    static int onProgress(
        void *user, curl_off_t, curl_off_t, curl_off_t sendTotal, curl_off_t sent);

    RemoteFiles *m_owner;
    RemoteAccount m_account;
    Endpoint m_endpoint;
    std::shared_ptr<std::atomic<quint64>> m_cancelGeneration;
};

size_t RemoteFiles::Worker::writeData(char *data, size_t size, size_t count, void *user)
{
    auto *transfer = static_cast<Transfer *>(user);
    transfer->received.append(data, qsizetype(size * count));
    return size * count;
}

size_t RemoteFiles::Worker::readData(char *data, size_t size, size_t count, void *user)
{
    auto *transfer = static_cast<Transfer *>(user);
    const qint64 read = transfer->file->read(data, qint64(size * count));
    return read < 0 ? CURL_READFUNC_ABORT : size_t(read);
}

int RemoteFiles::Worker::onProgress(
    void *user, curl_off_t, curl_off_t, curl_off_t sendTotal, curl_off_t sent)
{
    auto *transfer = static_cast<Transfer *>(user);
    if (transfer->worker->cancelled(transfer->generation))
        return 1;
    // A few updates a second are enough for a progress bar.
    if (transfer->index >= 0 && transfer->sinceProgress.hasExpired(50)) {
        transfer->sinceProgress.restart();
        Q_EMIT transfer->worker->m_owner->progress(
            transfer->index, qint64(sent), qint64(sendTotal ? sendTotal : transfer->file->size()));
    }
    return 0;
}

void RemoteFiles::Worker::prepare(CurlHandle &handle, const QByteArray &url, Transfer &transfer)
{
    CURL *curl = handle.curl;
    curl_easy_setopt(curl, CURLOPT_URL, url.constData());
    curl_easy_setopt(curl, CURLOPT_USERNAME, m_account.userName.toUtf8().constData());
    curl_easy_setopt(curl, CURLOPT_PASSWORD, m_account.password.toUtf8().constData());
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, handle.errorText);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, 20L);
    // A server that stops answering mid-transfer counts as a lost connection.
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, 30L);
    curl_easy_setopt(curl, CURLOPT_SERVER_RESPONSE_TIMEOUT, 30L);
    if (m_endpoint.sftp) {
        // Without a known host key the password would go to whoever answers: libcurl
        // refuses a key that is not in the file, as it refuses an unknown certificate.
        const QString knownHosts = m_account.certificateAuthorities.isEmpty()
            ? QDir::homePath() + QStringLiteral("/.ssh/known_hosts")
            : m_account.certificateAuthorities;
        curl_easy_setopt(curl, CURLOPT_SSH_KNOWNHOSTS, QFile::encodeName(knownHosts).constData());
    }
    if (m_endpoint.secure) {
        curl_easy_setopt(curl, CURLOPT_USE_SSL, long(CURLUSESSL_ALL));
        curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, 1L);
        curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, 2L);
        if (!m_account.certificateAuthorities.isEmpty())
            curl_easy_setopt(curl, CURLOPT_CAINFO,
                QFile::encodeName(m_account.certificateAuthorities).constData());
    }
    transfer.worker = this;
    transfer.sinceProgress.start();
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, &Worker::onProgress);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &transfer);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &Worker::writeData);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &transfer);
}

QString RemoteFiles::Worker::scrub(QString text) const
{
    if (!m_account.password.isEmpty())
        text.replace(m_account.password, QStringLiteral("********"));
    return text;
}

RemoteFiles::Worker::Outcome RemoteFiles::Worker::perform(CurlHandle &handle, quint64 generation)
{
    const CURLcode code = curl_easy_perform(handle.curl);
    if (code == CURLE_OK)
        return {};
    if (cancelled(generation))
        return {RemoteError::Cancelled, {}};
    long response = 0;
    curl_easy_getinfo(handle.curl, CURLINFO_RESPONSE_CODE, &response);
    curl_off_t connectTime = 0;
    curl_easy_getinfo(handle.curl, CURLINFO_CONNECT_TIME_T, &connectTime);
    RemoteError error = classify(code, response, connectTime > 0 || response > 0);
    if (m_endpoint.sftp && error == RemoteError::CertificateRejected)
        error = RemoteError::HostKeyRejected;
    QString detail = QString::fromUtf8(handle.errorText);
    if (detail.isEmpty())
        detail = QString::fromUtf8(curl_easy_strerror(code));
    return {error, scrub(detail)};
}

RemoteFiles::Worker::Outcome RemoteFiles::Worker::runList(
    const QString &folder, bool plainList, RemoteListing &listing, quint64 generation)
{
    CurlHandle handle;
    Transfer transfer;
    transfer.generation = generation;
    prepare(handle, m_endpoint.base + urlPath(m_endpoint, folder, true), transfer);
    if (!m_endpoint.sftp && !plainList)
        curl_easy_setopt(handle.curl, CURLOPT_CUSTOMREQUEST, "MLSD");
    Outcome outcome = perform(handle, generation);
    if (outcome.error == RemoteError::None)
        listing = parseRemoteListing(transfer.received);
    return outcome;
}

void RemoteFiles::Worker::list(const QString &folder, quint64 generation)
{
    if (cancelled(generation)) {
        Q_EMIT m_owner->finished(RemoteError::Cancelled, {});
        return;
    }
    if (m_endpoint.error != RemoteError::None) {
        Q_EMIT m_owner->finished(m_endpoint.error, {});
        return;
    }
    RemoteListing listing;
    Outcome outcome = runList(folder, false, listing, generation);
    // Servers without MLSD answer it with a syntax error; their LIST will do.
    if (outcome.error == RemoteError::Other || outcome.error == RemoteError::FolderNotAllowed)
        if (const Outcome plain = runList(folder, true, listing, generation);
            plain.error == RemoteError::None)
            outcome = plain;
    if (outcome.error == RemoteError::None)
        Q_EMIT m_owner->listed(folder, listing.folders, listing.files);
    Q_EMIT m_owner->finished(outcome.error, outcome.detail);
}

void RemoteFiles::Worker::removeQuietly(const QString &path)
{
    CurlHandle handle;
    Transfer transfer;
    transfer.generation = *m_cancelGeneration;
    prepare(handle, m_endpoint.base + urlPath(m_endpoint, QStringLiteral("/"), true), transfer);
    const QByteArray command
        = (m_endpoint.sftp ? QByteArrayLiteral("rm ") : QByteArrayLiteral("DELE "))
        + quotePath(m_endpoint, path);
    handle.quote = curl_slist_append(handle.quote, command.constData());
    curl_easy_setopt(handle.curl, CURLOPT_QUOTE, handle.quote);
    curl_easy_setopt(handle.curl, CURLOPT_NOBODY, 1L);
    curl_easy_perform(handle.curl);
}

RemoteFiles::Worker::Outcome RemoteFiles::Worker::runUpload(
    int index, const RemoteUpload &upload, quint64 generation)
{
    QFile file(upload.localPath);
    if (!file.open(QIODevice::ReadOnly))
        return {RemoteError::LocalFile, file.errorString()};

    // The file goes up under a hidden name and is renamed when it is whole, so that a
    // cut transfer never leaves a partial file under the real name and an overwritten
    // file stays whole until its replacement is.
    const QString folder = folderOf(upload.remotePath);
    const QString name = nameOf(upload.remotePath);
    const QString partName = QLatin1Char('.') + name + QStringLiteral(".part");
    const QString partPath
        = (folder == QLatin1String("/") ? QString() : folder) + QLatin1Char('/') + partName;

    CurlHandle handle;
    Transfer transfer;
    transfer.generation = generation;
    transfer.index = index;
    transfer.file = &file;
    prepare(handle, m_endpoint.base + urlPath(m_endpoint, partPath, false), transfer);
    curl_easy_setopt(handle.curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(handle.curl, CURLOPT_READFUNCTION, &Worker::readData);
    curl_easy_setopt(handle.curl, CURLOPT_READDATA, &transfer);
    curl_easy_setopt(handle.curl, CURLOPT_INFILESIZE_LARGE, curl_off_t(file.size()));
    if (m_endpoint.sftp) {
        // SFTP's rename never replaces a file: the old one goes once the new one is whole
        // ("*": a file already gone is no failure).
        if (upload.replaces) {
            const QByteArray remove = "*rm " + quotePath(m_endpoint, upload.remotePath);
            handle.quote = curl_slist_append(handle.quote, remove.constData());
        }
        const QByteArray rename = "rename " + quotePath(m_endpoint, partPath) + ' '
            + quotePath(m_endpoint, upload.remotePath);
        handle.quote = curl_slist_append(handle.quote, rename.constData());
    } else {
        const QByteArray from = "RNFR " + partName.toUtf8();
        const QByteArray to = "RNTO " + name.toUtf8();
        handle.quote = curl_slist_append(handle.quote, from.constData());
        handle.quote = curl_slist_append(handle.quote, to.constData());
    }
    curl_easy_setopt(handle.curl, CURLOPT_POSTQUOTE, handle.quote);

    Q_EMIT m_owner->progress(index, 0, file.size());
    Outcome outcome = perform(handle, generation);
    if (outcome.error != RemoteError::None) {
        removeQuietly(partPath);
        return outcome;
    }
    Q_EMIT m_owner->progress(index, file.size(), file.size());
    return outcome;
}

void RemoteFiles::Worker::upload(const QList<RemoteUpload> &files, quint64 generation)
{
    if (m_endpoint.error != RemoteError::None) {
        Q_EMIT m_owner->finished(m_endpoint.error, {});
        return;
    }
    for (int index = 0; index < files.size(); ++index) {
        if (cancelled(generation)) {
            Q_EMIT m_owner->finished(RemoteError::Cancelled, {});
            return;
        }
        const Outcome outcome = runUpload(index, files.at(index), generation);
        if (outcome.error != RemoteError::None) {
            Q_EMIT m_owner->finished(outcome.error, outcome.detail);
            return;
        }
        Q_EMIT m_owner->uploaded(index, files.at(index).remotePath);
    }
    Q_EMIT m_owner->finished(RemoteError::None, {});
}

RemoteFiles::RemoteFiles(RemoteAccount account, QObject *parent)
    : QObject(parent)
    , m_cancelGeneration(std::make_shared<std::atomic<quint64>>(0))
{
    initialiseCurl();
    m_thread = new QThread(this);
    m_thread->setObjectName(QStringLiteral("RemoteFiles"));
    m_worker = new Worker(this, std::move(account), m_cancelGeneration);
    m_worker->moveToThread(m_thread);
    connect(m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread->start();
}

RemoteFiles::~RemoteFiles()
{
    cancel();
    m_thread->quit();
    m_thread->wait();
}

bool RemoteFiles::supports(const QString &server)
{
    initialiseCurl();
    const Endpoint endpoint = endpointOf(server);
    if (endpoint.error != RemoteError::None)
        return false;
    const curl_version_info_data *info = curl_version_info(CURLVERSION_NOW);
    const char *wanted = endpoint.sftp ? "sftp" : endpoint.secure ? "ftps" : "ftp";
    for (const char *const *protocol = info->protocols; *protocol; ++protocol)
        if (qstrcmp(*protocol, wanted) == 0)
            return true;
    return false;
}

void RemoteFiles::list(const QString &folder)
{
    const quint64 generation = *m_cancelGeneration;
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, folder, generation] { worker->list(folder, generation); },
        Qt::QueuedConnection);
}

void RemoteFiles::upload(const QList<RemoteUpload> &files)
{
    const quint64 generation = *m_cancelGeneration;
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, files, generation] { worker->upload(files, generation); },
        Qt::QueuedConnection);
}

void RemoteFiles::cancel()
{
    ++*m_cancelGeneration;
}

} // namespace Vantry::Platform
