#include "control/documentreader.h"

#include "platform/prompts/userprompts.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

namespace Vantry::Control {

namespace {

DocumentBytes failure(qint32 error, const QString &detail)
{
    DocumentBytes result;
    result.error = error;
    result.detail = detail;
    return result;
}

// A URL load reports every failure with a platform code.
DocumentBytes asPlatformFailure(DocumentBytes result)
{
    if (result.error == LoadError::AccessDenied)
        result.error = LoadError::PlatformAccessDenied;
    else if (result.error == LoadError::InvalidArgument)
        result.error = LoadError::PlatformInvalidArgument;
    return result;
}

qint32 networkError(QNetworkReply::NetworkError error)
{
    switch (error) {
    case QNetworkReply::ContentNotFoundError:
    case QNetworkReply::ContentGoneError:
        return LoadError::FileNotFound;
    case QNetworkReply::ContentAccessDenied:
    case QNetworkReply::AuthenticationRequiredError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
        return LoadError::PlatformAccessDenied;
    case QNetworkReply::TimeoutError:
        return LoadError::ConnectionTimeout;
    case QNetworkReply::ProtocolUnknownError:
        return LoadError::UnknownProtocol;
    default:
        return LoadError::ResourceNotFound;
    }
}

DocumentBytes fetch(
    const QUrl &url, std::chrono::milliseconds timeout, Platform::UserPrompts *prompts)
{
    QNetworkAccessManager network;
    QNetworkRequest request(url);
    request.setAttribute(
        QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setTransferTimeout(int(timeout.count()));
    std::unique_ptr<QNetworkReply> reply(network.get(request));

    QEventLoop loop;
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    deadline.start(timeout);
    // A quick answer comes without any input being taken; a slow one gets a modal progress
    // whose Cancel must be reachable.
    QTimer reveal;
    reveal.setSingleShot(true);
    QObject::connect(&reveal, &QTimer::timeout, &loop, &QEventLoop::quit);
    reveal.start(prompts ? fetchProgressDelay : timeout);
    if (!reply->isFinished())
        loop.exec(QEventLoop::ExcludeUserInputEvents);

    bool cancelled = false;
    std::unique_ptr<Platform::UserPrompts::Progress> progress;
    if (!reply->isFinished() && deadline.isActive() && prompts) {
        progress = prompts->progress(QStringLiteral("Loading %1 ...").arg(url.toDisplayString()));
        if (progress)
            QObject::connect(progress.get(), &Platform::UserPrompts::Progress::canceled, &loop,
                [&cancelled, &loop] {
                    cancelled = true;
                    loop.quit();
                });
        if (!reply->isFinished() && !cancelled)
            loop.exec();
        progress.reset();
    }

    if (!reply->isFinished()) {
        reply->abort();
        if (cancelled)
            return failure(LoadError::Cancelled,
                QStringLiteral("Loading %1 was cancelled").arg(url.toDisplayString()));
        return failure(LoadError::ConnectionTimeout,
            QStringLiteral("%1 did not answer in time").arg(url.toDisplayString()));
    }
    if (reply->error() != QNetworkReply::NoError)
        return failure(networkError(reply->error()), reply->errorString());

    DocumentBytes result;
    result.bytes = reply->readAll();
    result.address = reply->url().toString();
    const QByteArray contentType = reply->header(QNetworkRequest::ContentTypeHeader).toByteArray();
    if (const qsizetype at = contentType.toLower().indexOf("charset"); at >= 0)
        result.charset = contentType.mid(at);
    return result;
}

} // namespace

DocumentBytes readLocalFile(const QString &path)
{
    const QFileInfo info(path);
    if (path.isEmpty())
        return failure(LoadError::FileNotFound, QStringLiteral("No file name was given"));
    if (!info.exists()) {
        // Tells a missing folder apart from a missing file in an existing one.
        if (!QFileInfo(info.absolutePath()).isDir())
            return failure(LoadError::PathNotFound,
                QStringLiteral("The folder %1 does not exist")
                    .arg(QDir::toNativeSeparators(info.absolutePath())));
        return failure(LoadError::FileNotFound,
            QStringLiteral("%1 does not exist").arg(QDir::toNativeSeparators(path)));
    }
    if (info.isDir())
        return failure(LoadError::InvalidArgument,
            QStringLiteral("%1 is a folder, not a file").arg(QDir::toNativeSeparators(path)));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        const qint32 error = info.isReadable() ? LoadError::Unexpected : LoadError::AccessDenied;
        return failure(error, file.errorString());
    }
    DocumentBytes result;
    result.bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return failure(LoadError::Unexpected, file.errorString());
    result.address = QUrl::fromLocalFile(info.absoluteFilePath()).toString();
    return result;
}

DocumentBytes readAddress(
    const QString &address, std::chrono::milliseconds timeout, Platform::UserPrompts *prompts)
{
    const QString trimmed = address.trimmed();
    if (trimmed.isEmpty())
        return failure(LoadError::PlatformInvalidArgument, QStringLiteral("No address was given"));
    // A path is a path, even where it could pass for a URL.
    if (QDir::isAbsolutePath(trimmed))
        return asPlatformFailure(readLocalFile(trimmed));

    const QUrl url = QUrl::fromUserInput(trimmed, QDir::currentPath(), QUrl::AssumeLocalFile);
    if (!url.isValid())
        return failure(LoadError::PlatformInvalidArgument,
            QStringLiteral("%1 is not a valid address").arg(trimmed));
    if (url.isLocalFile())
        return asPlatformFailure(readLocalFile(url.toLocalFile()));
    const QString scheme = url.scheme().toLower();
    if (scheme == QLatin1String("http") || scheme == QLatin1String("https"))
        return fetch(url, timeout, prompts);
    return failure(LoadError::UnknownProtocol,
        QStringLiteral("Documents cannot be opened from %1 addresses").arg(scheme));
}

} // namespace Vantry::Control
