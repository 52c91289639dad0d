#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <memory>

class QThread;

namespace Vantry::Platform {

// The server an upload goes to. server is a host, host:port or URL: "ftp://" (and a bare
// host) is plain FTP, "ftps://" FTP with explicit TLS (AUTH TLS, the certificate verified
// against the system's authorities or certificateAuthorities), "sftp://" SFTP where the
// curl library has it (the host key checked against ~/.ssh/known_hosts, or the known_hosts
// file certificateAuthorities names).
struct RemoteAccount
{
    QString server;
    QString userName;
    QString password;
    // What the server is verified with instead of the user's defaults: a PEM file of
    // authorities for FTPS, a known_hosts file for SFTP.
    QString certificateAuthorities;
};

struct RemoteUpload
{
    QString localPath;
    // Absolute, as the server shows it after login.
    QString remotePath;
    // A file of that name is there and is to be replaced.
    bool replaces = false;
};

// The failures a user is told about, in plain words.
enum class RemoteError
{
    None,
    BadAddress,
    NotSupported,
    CannotConnect,
    LoginRefused,
    NotSecure,
    CertificateRejected,
    HostKeyRejected,
    FolderNotAllowed,
    ServerFull,
    ConnectionLost,
    LocalFile,
    Cancelled,
    Other
};

QString remoteErrorText(RemoteError error);

// Folders and files of a server folder listing (MLSD facts or a Unix "ls -l" listing).
// Links are neither: following one could leave a restricted folder.
struct RemoteListing
{
    QStringList folders;
    QStringList files;
};
RemoteListing parseRemoteListing(const QByteArray &listing);

// File transfers with libcurl on a worker thread of their own, so the window keeps
// running while they go on. Requests run one after the other in the order given; their
// results come back as signals on the thread that owns this object. The password goes to
// libcurl and nowhere else: no message, signal or log carries it.
class RemoteFiles : public QObject
{
    Q_OBJECT
public:
    explicit RemoteFiles(RemoteAccount account, QObject *parent = nullptr);
    // Cancels what runs and waits for the worker to stop.
    ~RemoteFiles() override;

    // Whether this build's libcurl speaks the account's protocol.
    static bool supports(const QString &server);

    void list(const QString &folder);
    void upload(const QList<RemoteUpload> &files);
    // Stops the transfer under way at once; a file cut short is removed from the server.
    // Requests queued behind it are dropped too. Every request ends with finished, a
    // cancelled one with Cancelled once the server is tidied up.
    void cancel();

Q_SIGNALS:
    void listed(const QString &folder, const QStringList &folders, const QStringList &files);
    // index into the files of upload(); sent and total in bytes.
    void progress(int index, qint64 sent, qint64 total);
    void uploaded(int index, const QString &remotePath);
    // The end of a list or upload request; error None when it all went through.
    void finished(Vantry::Platform::RemoteError error, const QString &detail);

private:
    class Worker;
    std::shared_ptr<std::atomic<quint64>> m_cancelGeneration;
    QThread *m_thread = nullptr;
    Worker *m_worker = nullptr;
};

} // namespace Vantry::Platform
