#pragma once

#include <VantryHTMLEditor/EditorDialogs.h>

#include <QList>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <memory>

namespace Vantry::Platform {
class RemoteFiles;
enum class RemoteError;
} // namespace Vantry::Platform

namespace Vantry::Images {

// One image upload: browsing the server's folders inside the upload root and sending
// local files there under names the FTP_* rules give. Everything runs in the background;
// the answers come as signals, so the window never waits for the server.
class UploadFlow : public QObject
{
    Q_OBJECT
public:
    // Takes the account, rules and publishing settings of values.
    explicit UploadFlow(const ImageUploadValues &values, QObject *parent = nullptr);
    ~UploadFlow() override;

    // The folder the user may not leave, the folder shown and its subfolders.
    QString root() const { return m_root; }
    QString folder() const { return m_folder; }
    QStringList folders() const { return m_folders; }
    bool isBusy() const { return m_state != State::Idle; }
    // What the settings themselves get wrong (an unclean restricted folder, an address of
    // a protocol this build lacks); empty when they are usable.
    QString settingsError() const { return m_settingsError; }

    // Lists the start folder (FTP_InitialDir inside the root).
    bool open();
    // Shows requested (absolute, or relative to the folder shown); false, with failed,
    // when it lies outside the root or the flow is busy.
    bool browse(const QString &requested);
    // Sends localFiles into folder (absolute, or relative to the folder shown; the folder
    // shown when empty). False, with failed, when the rules refuse them before anything
    // is sent.
    bool upload(const QStringList &localFiles, const QString &folder = {});
    // Stops at once; finished(false) follows once a file cut short is removed, or once a
    // listing has stopped.
    void cancel();

Q_SIGNALS:
    void folderListed(const QString &folder, const QStringList &folders);
    void fileProgress(int index, qint64 sent, qint64 total);
    void totalProgress(qint64 sent, qint64 total);
    // One file is on the server; address is where the web site publishes it. The image
    // placement takes this to put the image into the document.
    void imageUploaded(const QString &localPath, const QString &remotePath, const QString &address);
    void failed(const QString &message);
    // An upload, or a cancelled listing, is over: complete when every file went up.
    void finished(bool complete);

private:
    enum class State
    {
        Idle,
        Listing,
        Naming,
        Uploading,
        Cancelling
    };

    void onListed(const QString &folder, const QStringList &folders, const QStringList &files);
    void onProgress(int index, qint64 sent, qint64 total);
    void onUploaded(int index, const QString &remotePath);
    void onFinished(Platform::RemoteError error, const QString &detail);
    void startTransfer();
    void fail(const QString &message);

    ImageUploadValues m_values;
    std::unique_ptr<Platform::RemoteFiles> m_remote;
    QString m_settingsError;
    QString m_root;
    QString m_folder;
    QStringList m_folders;
    QStringList m_listedFolders;
    QSet<QString> m_existing;
    State m_state = State::Idle;
    bool m_cancelledUpload = false;
    QString m_listing;
    QStringList m_localFiles;
    QList<qint64> m_sizes;
    qint64 m_done = 0;
    qint64 m_total = 0;
};

} // namespace Vantry::Images
