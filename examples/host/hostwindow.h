#pragma once

#include <VantryHTMLEditor/PropertyBag.h>

#include <QMainWindow>
#include <QString>

#include <memory>

namespace Vantry {
class HTMLEditorComponent;
} // namespace Vantry

// A main window around the editor, the way a host application embeds it: a File menu on
// the editor's file methods, the editor's properties kept in an optional settings file.
class HostWindow : public QMainWindow, private Vantry::PropertyBag::ErrorReceiver
{
    Q_OBJECT

public:
    explicit HostWindow(const QString &settingsFile, QWidget *parent = nullptr);
    ~HostWindow() override;

    Vantry::HTMLEditorComponent *editor() const { return m_editor; }

    // Opens an HTML file through the editor; it reports a file it cannot load itself.
    void openFile(const QString &path);
    // Asks for an address and opens the page found there.
    void openUrl();
    // Writes the editor's properties back to the settings file, if one was given.
    bool saveSettings(QString *error);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void propertyBagError(const QString &message) override;
    void createFileMenu();
    // Offers to save a changed document; false when the user keeps it open.
    bool maySetDocumentAside();
    void updateTitle();

    Vantry::HTMLEditorComponent *m_editor = nullptr;
    std::unique_ptr<Vantry::IniPropertyBag> m_bag;
};
