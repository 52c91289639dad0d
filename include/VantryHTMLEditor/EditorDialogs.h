#pragma once

#include <VantryHTMLEditor/ImageDialogValues.h>
#include <VantryHTMLEditor/LinkDialogValues.h>
#include <VantryHTMLEditor/PageDialogValues.h>
#include <VantryHTMLEditor/StyleDialogValues.h>
#include <VantryHTMLEditor/TableDialogValues.h>
#include <VantryHTMLEditor/vantryhtmleditor_export.h>

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <memory>

class QWidget;

namespace Vantry {

class UserPrompts;

// The editor's own dialogs: table, image, link, page, style, element properties, spelling
// and upload. The editor fills a dialog's values from the document, hands them here, and
// writes back what comes out; a host that wants its own dialogs (its look, a web form,
// answers from a script) implements this, or derives from WidgetDialogs to replace only
// some, and hands it to HTMLEditorComponent::setEditorDialogs.
//
// Each dialog method takes its values by reference, changes them as the user did and
// returns true for OK; false (and the values' cancel flag set) when the user cancelled.
// The editor calls them on the GUI thread; an implementation may run a modal loop but
// must return.
// Upload

// What the image upload form (command 14, `UploadImage`) works with. The editor fills the
// account and rules from its FTP_* properties, the switches turned into truth values.
struct ImageUploadValues
{
    QString FTP_ServerName;
    QString FTP_UserName;
    QString FTP_Password;
    QString FTP_InitialDir;
    QString FTP_FileNamePrefix;
    QString FTP_FileNameSuffix;
    QString FTP_RistrictedDirectory;
    bool FTP_AllowMultiableFiles = true;
    bool FTP_OverWriteFiles = false;
    bool FTP_IncermentExistingFileNames = true;
    bool FTP_StripInvalidCharacters = true;
    // Where the web server publishes the upload root (see the editor's README).
    QString BaseURL;
    QString ImageVCDirectory;
    // A PEM file of the authorities an FTPS server's certificate is checked against, or
    // the known_hosts file an SFTP server's host key is looked up in; empty for the
    // system's authorities and the user's ~/.ssh/known_hosts.
    QString certificateAuthorities;

    // The user's choice: local image files and the server folder they go to.
    QStringList files;
    QString remoteFolder;
    // What went up, in step: the server paths and the addresses they are published at.
    // A dialog that only chooses leaves them empty and the editor uploads the files.
    QStringList remotePaths;
    QStringList addresses;
    bool Cancel = false;
};

class VANTRYHTMLEDITOR_EXPORT EditorDialogs
{
public:
    EditorDialogs() = default;
    virtual ~EditorDialogs();
    Q_DISABLE_COPY_MOVE(EditorDialogs)

    // Tables. insertTable may leave the row and column counts as typed: the editor inserts
    // nothing, and says why, when they are not 1 to 1,000 rows and 1 to 100 columns.
    virtual bool insertTable(InsertTableValues &values) = 0;
    virtual bool tableProperties(TablePropertiesValues &values) = 0;
    virtual bool cellProperties(CellPropertiesValues &values) = 0;

    // Upload

    // Lets the user choose image files and a server folder inside FTP_RistrictedDirectory
    // and, in the editor's own form, uploads them. Files the editor already has in mind
    // (an image being inserted) come in files.
    virtual bool imageUpload(ImageUploadValues &values) = 0;

    // ---- spelling ----------------------------------------------------------------------
    // The spelling check (SpellCheck) walks the misspelt words of the document in reading
    // order. For each it selects the word in the document and asks spellingWord what the
    // user does; at the end, or when the user cancels, it calls spellingDone once.
    struct SpellingQuestion
    {
        QString word;
        // The sentence around the word, and where the word starts in it.
        QString sentence;
        qsizetype wordStart = 0;
        QStringList suggestions;
        // The dictionary in use ("en_US") and the installed ones the user can switch to.
        QString dictionary;
        QStringList dictionaries;
        // Whether there is an answer that Undo Last can take back.
        bool canUndo = false;
    };
    struct SpellingAnswer
    {
        enum class Action
        {
            // Replace this word (Change) or it and every later one like it (ChangeAll)
            // with text.
            Change,
            ChangeAll,
            Ignore,
            // Accept the word for the rest of the session.
            IgnoreAll,
            // Accept it from now on: it goes into the user's personal word list.
            AddToDictionary,
            // Take back the last answer and ask about its word again.
            UndoLast,
            // Check with the dictionary named in text from this word on.
            SwitchDictionary,
            Cancel
        };
        Action action = Action::Cancel;
        QString text;
    };
    virtual SpellingAnswer spellingWord(const SpellingQuestion &question) = 0;
    virtual void spellingDone() = 0;

    // Images. The values come filled from the image being edited, or empty for a new one.
    virtual bool insertImage(ImageDialogValues &values) = 0;

    // Links and the page. linkProperties loads the host's lists from the values; a list it
    // cannot read stays as it was and the user is told why.
    virtual bool linkProperties(LinkPropertiesValues &values) = 0;
    virtual bool pageProperties(PagePropertiesValues &values) = 0;
    // Styles: the style class of the current element, a Flash movie, and the current
    // element's attributes.
    virtual bool selectStyle(SelectStyleValues &values) = 0;
    virtual bool flashProperties(FlashPropertiesValues &values) = 0;
    virtual bool elementProperties(ElementPropertiesValues &values) = 0;
};

// The dialogs of a desktop session and the editor's default: modal to the window of parent.
class VANTRYHTMLEDITOR_EXPORT WidgetDialogs : public EditorDialogs
{
public:
    explicit WidgetDialogs(QWidget *parent);
    ~WidgetDialogs() override;

    // Tables.
    bool insertTable(InsertTableValues &values) override;
    bool tableProperties(TablePropertiesValues &values) override;
    bool cellProperties(CellPropertiesValues &values) override;
    // The ImageUpload form: browses the server, uploads with progress and Cancel.
    bool imageUpload(ImageUploadValues &values) override;

    // One dialog stays open over the whole walk, modal to the window.
    SpellingAnswer spellingWord(const SpellingQuestion &question) override;
    void spellingDone() override;

    // Images.
    bool insertImage(ImageDialogValues &values) override;

    // Links and the page.
    bool linkProperties(LinkPropertiesValues &values) override;
    bool pageProperties(PagePropertiesValues &values) override;
    // Styles.
    bool selectStyle(SelectStyleValues &values) override;
    bool flashProperties(FlashPropertiesValues &values) override;
    bool elementProperties(ElementPropertiesValues &values) override;

protected:
    // The window the dialogs are modal to; none once parent is gone.
    QWidget *window() const;
    // The colour and file pickers of the dialogs: the editor's prompts when parent is an
    // editor, else the desktop's.
    UserPrompts &prompts() const;

private:
    QPointer<QWidget> m_parent;
    mutable std::unique_ptr<UserPrompts> m_ownPrompts;

    // The spelling dialog, kept open over a whole walk.
    QPointer<QWidget> m_spelling;
};

} // namespace Vantry
