#include "hostwindow.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>
#include <VantryHTMLEditor/PropertyBag.h>

#include <QFile>
#include <QFileInfo>
#include <QStatusBar>
#include <QUrl>

HostWindow::HostWindow(const QString &settingsFile, QWidget *parent)
    : QMainWindow(parent)
    , m_editor(new Vantry::HTMLEditorComponent(this))
{
    setCentralWidget(m_editor);
    if (!settingsFile.isEmpty()) {
        m_bag = std::make_unique<Vantry::IniPropertyBag>(settingsFile);
        m_bag->setErrorHandler([this](const QString &message) {
            statusBar()->showMessage(message);
            qWarning("%s", qPrintable(message));
        });
        m_editor->ReadProperties(*m_bag);
    }
    connect(m_editor, &Vantry::HTMLEditorComponent::HTMLChanged, this, [this] {
        statusBar()->showMessage(tr("Edited"), 2000);
    });
    connect(m_editor, &Vantry::HTMLEditorComponent::DocumentLoaded, this,
            &HostWindow::updateTitle);
    resize(1000, 720);
    updateTitle();
}

HostWindow::~HostWindow() = default;

bool HostWindow::openFile(const QString &path, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = tr("Cannot open %1: %2").arg(path, file.errorString());
        return false;
    }
    m_fileName = QFileInfo(path).absoluteFilePath();
    m_editor->setBaseURL(QUrl::fromLocalFile(QFileInfo(path).absolutePath() + QLatin1Char('/'))
                             .toString());
    m_editor->setSetHtmlSource(QString::fromUtf8(file.readAll()));
    updateTitle();
    return true;
}

bool HostWindow::saveSettings(QString *error)
{
    if (!m_bag)
        return true;
    m_editor->WriteProperties(*m_bag);
    if (!m_bag->sync()) {
        if (error)
            *error = m_bag->errors().value(m_bag->errors().size() - 1);
        return false;
    }
    return true;
}

void HostWindow::updateTitle()
{
    const QString name = m_fileName.isEmpty() ? tr("Untitled") : QFileInfo(m_fileName).fileName();
    setWindowTitle(tr("%1 - Vantry HTML Editor").arg(name));
}
