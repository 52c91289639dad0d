#pragma once

#include "control/documentreader.h"
#include "control/settings.h"
#include "control/textcodec.h"

#include <QString>

#include <functional>

namespace Vantry {
class UserPrompts;
} // namespace Vantry

namespace Vantry::Platform {
class DesignSurface;
using Vantry::UserPrompts;
} // namespace Vantry::Platform

namespace Vantry::Control {

class ContentExchange;

// The message of a load-error number ("File not found"), "Unknown error" for numbers
// without one of their own.
QString loadErrorMessage(qint32 error);
// The whole text of the load-error box.
QString loadErrorText(qint32 error);

// Server-side script blocks (<% %>, <?php ?>) outside scripts, styles and comments. The
// design surface would turn them into text, and a save would destroy them.
bool containsServerScript(const QString &html);

// A file name typed without an extension gets ".html"; one with an extension is kept.
QString withHtmlExtension(const QString &path);

// The editor's document files: new, open from a file or an address, save, save as, with
// the save-changes prompt in front of every operation that replaces the document.
class FileOperations
{
public:
    struct Hooks
    {
        // Where every message box and picker goes.
        std::function<Platform::UserPrompts &()> prompts;
        // isDirty, through the property so that the change is announced.
        std::function<void(bool)> setDirty;
        // Refreshes toolbar buttons and selection state after the document changed.
        std::function<void()> refreshSelectionState;
        // Lets pending user-interface events run once.
        std::function<void()> settle;
        // Gives the focus to the view that shows the document.
        std::function<void()> focusDocument;
    };

    FileOperations(Settings &settings, ContentExchange &exchange, Platform::DesignSurface &surface,
        Hooks hooks);

    void fileNew();
    void fileOpen(const QString &filePath);
    void urlOpen(const QString &address);
    // Both return the current file path afterwards.
    QString fileSave(const QString &filePath);
    QString fileSaveAs(const QString &filePath);

    QString currentFilePath() const { return m_currentPath; }
    bool isOpenedFromUrl() const { return m_openedFromUrl; }
    // The encoding the document is saved in unless it declares another.
    TextCodec::Encoding encoding() const { return m_encoding; }

    static QString fileFilter();

private:
    // The save-changes prompt: false when the caller must stop.
    [[nodiscard]] bool mayReplaceDocument();
    // Saves to path, or asks for one when path is empty. False when nothing was written.
    bool save(const QString &path);
    // FileSave without a path: asks unless the document has a file of its own.
    bool saveToCurrentOrAsk();
    // Decodes and loads a document read from a file or an address; the number of an error
    // that left it unloaded.
    [[nodiscard]] qint32 loadBytes(const DocumentBytes &read);
    // Loads decoded text as the document that came from address.
    [[nodiscard]] qint32 loadDocument(const QString &html, const QString &address);
    // What the save dialog starts from: the document's file, or the name of its address.
    QString proposedSaveName() const;
    [[nodiscard]] bool waitUntilReady();
    void newDocument();
    void showLoadError(qint32 error);
    Platform::UserPrompts &prompts() const { return m_hooks.prompts(); }
    void setDirty(bool dirty) const;
    void settle() const;
    void refreshSelectionState() const;
    void focusDocument() const;

    Settings &m_settings;
    ContentExchange &m_exchange;
    Platform::DesignSurface &m_surface;
    Hooks m_hooks;
    QString m_currentPath;
    bool m_openedFromUrl = false;
    TextCodec::Encoding m_encoding;
};

} // namespace Vantry::Control
