#include "control/fileoperations.h"

#include "control/contentexchange.h"
#include "control/contentrules.h"
#include "control/documentreader.h"
#include "platform/designsurface.h"
#include "platform/prompts/userprompts.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTimer>
#include <QUrl>

namespace Vantry::Control {

namespace {

using Platform::UserPrompts;

// How long an operation waits for a surface that has not loaded its first document.
constexpr std::chrono::seconds readyTimeout{60};
// Every load call already waits for the surface's answer; a surface that fails this
// often in a row is not busy but broken.
constexpr int loadAttempts = 3;

const QString blankDocument = QStringLiteral("<html><head></head><body></body></html>");

QString sentence(QString text)
{
    text = text.trimmed();
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('.')))
        text += QLatin1Char('.');
    return text;
}

QString cannotSave(const QString &path, const QString &reason)
{
    return QStringLiteral("The document could not be saved to %1.\n\n%2")
        .arg(QDir::toNativeSeparators(path), sentence(reason));
}

} // namespace

QString loadErrorMessage(qint32 error)
{
    switch (error) {
    case LoadError::Unexpected:
        return QStringLiteral("Unexpected error");
    case LoadError::FileNotFound:
        return QStringLiteral("File not found");
    case LoadError::PathNotFound:
        return QStringLiteral("Path not found");
    case LoadError::Frameset:
        return QStringLiteral("Document contains a frameset");
    case LoadError::ServerScript:
        return QStringLiteral("Document is primarily server side script");
    case LoadError::InvalidArgument:
        return QStringLiteral("Invalid argument");
    case LoadError::AccessDenied:
        return QStringLiteral("Access denied");
    case LoadError::NotText:
        return QStringLiteral("Document is a binary file, not text");
    case LoadError::ConnectionTimeout:
        return QStringLiteral("The server did not answer in time");
    default:
        return QStringLiteral("Unknown error");
    }
}

QString loadErrorText(qint32 error)
{
    return QStringLiteral("Error occurred while loading document: ") + loadErrorMessage(error)
        + QLatin1Char('.');
}

QString withHtmlExtension(const QString &path)
{
    if (path.isEmpty() || !QFileInfo(path).suffix().isEmpty())
        return path;
    return path + QStringLiteral(".html");
}

bool containsServerScript(const QString &html)
{
    // Script blocks inside these are text the parser keeps as it is.
    static const QRegularExpression kept(
        QStringLiteral(
            "<!--.*?-->|<script\\b[^>]*>.*?</script\\s*>|<style\\b[^>]*>.*?</style\\s*>"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression serverBlock(
        QStringLiteral("<%|<\\?(?:php\\b|=)"), QRegularExpression::CaseInsensitiveOption);
    QString rest = html;
    rest.remove(kept);
    return rest.contains(serverBlock);
}

FileOperations::FileOperations(
    Settings &settings, ContentExchange &exchange, Platform::DesignSurface &surface, Hooks hooks)
    : m_settings(settings)
    , m_exchange(exchange)
    , m_surface(surface)
    , m_hooks(std::move(hooks))
{ }

QString FileOperations::fileFilter()
{
    return QStringLiteral("HTML Files (*.htm *.html);;All Files (*)");
}

void FileOperations::setDirty(bool dirty) const
{
    if (m_hooks.setDirty)
        m_hooks.setDirty(dirty);
}

void FileOperations::settle() const
{
    if (m_hooks.settle)
        m_hooks.settle();
}

void FileOperations::focusDocument() const
{
    if (m_hooks.focusDocument)
        m_hooks.focusDocument();
}

void FileOperations::refreshSelectionState() const
{
    if (m_hooks.refreshSelectionState)
        m_hooks.refreshSelectionState();
}

bool FileOperations::mayReplaceDocument()
{
    if (!m_settings.isDirty)
        return true;
    const UserPrompts::Answer answer = prompts().question(
        QStringLiteral("The current document has changed.\r\n\r\nDo you want to save changes?"),
        UserPrompts::Choices::YesNoCancel);
    bool proceed = true;
    if (answer == UserPrompts::Answer::Cancel)
        proceed = false;
    else if (answer == UserPrompts::Answer::Yes)
        // A save that did not happen (cancelled, failed) must not let the changes go.
        proceed = saveToCurrentOrAsk();
    focusDocument();
    return proceed;
}

void FileOperations::fileNew()
{
    // A disabled editor keeps its document, as it ignores SetHtmlSource.
    if (!m_settings.Enabled || !mayReplaceDocument())
        return;
    newDocument();
    focusDocument();
}

void FileOperations::fileOpen(const QString &filePath)
{
    if (!m_settings.Enabled)
        return;
    refreshSelectionState();
    if (!mayReplaceDocument())
        return;

    QString path = filePath;
    if (path.isEmpty()) {
        path = prompts().openFileName(QStringLiteral("Open HTML File"), fileFilter());
        if (path.isEmpty())
            return;
    }
    m_openedFromUrl = false;

    const DocumentBytes read = readLocalFile(path);
    qint32 error = read.error;
    if (read.ok()) {
        error = loadBytes(read);
        if (error == LoadError::None)
            m_currentPath = QFileInfo(path).absoluteFilePath();
    }
    setDirty(false);

    settle();
    focusDocument();
    settle();
    refreshSelectionState();

    // Every failure is reported, the editor's own numbers too: a file that cannot be read
    // must say so.
    if (error != LoadError::None) {
        showLoadError(error);
        newDocument();
    }
}

void FileOperations::urlOpen(const QString &address)
{
    if (!m_settings.Enabled)
        return;
    refreshSelectionState();
    if (!mayReplaceDocument())
        return;

    const DocumentBytes read = readAddress(address, fetchTimeout, &prompts());
    // Given up by the user: the document stays as it was.
    if (read.error == LoadError::Cancelled)
        return;
    const qint32 error = read.ok() ? loadBytes(read) : read.error;
    m_currentPath = address;
    m_openedFromUrl = true;
    setDirty(false);

    // Only platform failure codes (negative) count here; an address load produces no
    // other kind.
    if (error < 0) {
        showLoadError(error);
        newDocument();
    }
}

QString FileOperations::fileSave(const QString &filePath)
{
    if (filePath.isEmpty() || m_openedFromUrl)
        saveToCurrentOrAsk();
    else
        save(filePath);
    return m_currentPath;
}

QString FileOperations::fileSaveAs(const QString &filePath)
{
    save(filePath);
    return m_currentPath;
}

bool FileOperations::saveToCurrentOrAsk()
{
    // An address is no place to save to.
    if (m_currentPath.isEmpty() || m_openedFromUrl)
        return save(QString());
    return save(m_currentPath);
}

bool FileOperations::save(const QString &path)
{
    bool fetched = false;
    const QString html = ContentRules::removeBase(
        m_exchange.fetchDocumentHTMLFromCurrentView(&fetched), m_settings.BaseURL);
    refreshSelectionState();
    if (!fetched) {
        const QString reason = m_surface.lastError().isEmpty()
            ? QStringLiteral("The editor has not finished loading")
            : m_surface.lastError();
        prompts().critical(
            QStringLiteral("The document could not be saved.\n\n") + sentence(reason));
        return false;
    }

    QString target = path;
    if (target.isEmpty()) {
        target = prompts().saveFileName(
            QStringLiteral("Save HTML File"), fileFilter(), proposedSaveName());
        if (target.isEmpty())
            return false;
        target = withHtmlExtension(target);
    }
    const QFileInfo info(target);
    if (info.isDir()) {
        prompts().critical(cannotSave(target, QStringLiteral("It is a folder")));
        return false;
    }

    const TextCodec::Encoding encoding = TextCodec::encodingForSave(html, m_encoding);
    const TextCodec::Encoded encoded = TextCodec::encode(html, encoding);
    if (!encoded.error.isEmpty()) {
        prompts().critical(cannotSave(target, encoded.error));
        return false;
    }

    if (!QDir().mkpath(info.absolutePath())) {
        prompts().critical(cannotSave(target,
            QStringLiteral("The folder %1 could not be created")
                .arg(QDir::toNativeSeparators(info.absolutePath()))));
        return false;
    }
    // Written beside the target and renamed over it, so that a failure leaves the old
    // file whole.
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly) || file.write(encoded.bytes) != encoded.bytes.size()
        || !file.commit()) {
        prompts().critical(cannotSave(target, file.errorString()));
        return false;
    }

    m_currentPath = info.absoluteFilePath();
    m_encoding = encoding;
    setDirty(false);
    // Relative addresses of the next document loaded resolve where the file lives. The
    // surface already edits against the BASE address, so this document is not loaded
    // again: a reload would lose the caret, the scroll position, the undo history, the
    // source view and a key pressed meanwhile.
    m_surface.setDocumentAddress(QUrl::fromLocalFile(m_currentPath).toString());
    return true;
}

qint32 FileOperations::loadBytes(const DocumentBytes &read)
{
    const TextCodec::Decoded decoded = TextCodec::decode(read.bytes, read.charset);
    // Opened as text, an image would be saved over as text.
    if (decoded.binary)
        return LoadError::NotText;
    if (containsServerScript(decoded.text))
        return LoadError::ServerScript;
    const qint32 error = loadDocument(decoded.text, read.address);
    if (error == LoadError::None)
        m_encoding = decoded.encoding;
    return error;
}

QString FileOperations::proposedSaveName() const
{
    if (m_openedFromUrl)
        return QUrl(m_currentPath).fileName();
    return m_currentPath;
}

bool FileOperations::waitUntilReady()
{
    if (m_exchange.isDocumentReady())
        return true;
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(
        &m_surface, &Platform::DesignSurface::documentComplete, &loop, &QEventLoop::quit);
    timer.start(readyTimeout);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    return m_exchange.isDocumentReady();
}

qint32 FileOperations::loadDocument(const QString &html, const QString &address)
{
    if (!waitUntilReady())
        return LoadError::Unexpected;
    // Relative images and style sheets resolve where the document came from.
    m_surface.setDocumentAddress(address);
    const QString withBase = ContentRules::insertBase(html, m_settings.BaseURL);
    bool loaded = false;
    for (int attempt = 0; attempt < loadAttempts && !loaded; ++attempt) {
        loaded = m_exchange.loadIntoSurface(withBase);
        if (!loaded)
            settle();
    }
    if (!loaded)
        return LoadError::Unexpected;
    if (!m_surface.elementsByTagName(QStringLiteral("FRAMESET")).isEmpty())
        return LoadError::Frameset;
    return LoadError::None;
}

void FileOperations::newDocument()
{
    m_surface.setDocumentAddress(QString());
    m_exchange.loadIntoSurface(blankDocument);
    m_currentPath.clear();
    m_encoding = {};
    setDirty(false);
}

void FileOperations::showLoadError(qint32 error)
{
    prompts().critical(loadErrorText(error));
}

} // namespace Vantry::Control
