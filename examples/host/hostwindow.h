#pragma once

#include <QMainWindow>
#include <QString>

#include <memory>

namespace Vantry {
class HTMLEditorComponent;
class IniPropertyBag;
} // namespace Vantry

// A main window around the editor, the way a host application embeds it.
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit HostWindow(const QString &settingsFile, QWidget *parent = nullptr);
    ~HostWindow() override;

    Vantry::HTMLEditorComponent *editor() const { return m_editor; }

    // Reads an HTML file and hands it to the editor; false with a message when it cannot
    // be read.
    bool openFile(const QString &path, QString *error);
    // Writes the editor's properties back to the settings file, if one was given.
    bool saveSettings(QString *error);

private:
    void updateTitle();

    Vantry::HTMLEditorComponent *m_editor = nullptr;
    std::unique_ptr<Vantry::IniPropertyBag> m_bag;
    QString m_fileName;
};
