#include "hostwindow.h"

#include <VantryHTMLEditor/HTMLEditorComponent.h>
#include <VantryHTMLEditor/PropertyBag.h>

#include <QCloseEvent>
#include <QFileInfo>
#include <QIcon>
#include <QInputDialog>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QUrl>

HostWindow::HostWindow(const QString &settingsFile, QWidget *parent)
    : QMainWindow(parent)
    , m_editor(new Vantry::HTMLEditorComponent(this))
{
    setCentralWidget(m_editor);
    // Files are edited whole, head included, unless the settings say otherwise.
    bool wholeDocuments = true;
    if (!settingsFile.isEmpty()) {
        m_bag = std::make_unique<Vantry::IniPropertyBag>(settingsFile);
        m_bag->setErrorReceiver(this);
        m_editor->ReadProperties(*m_bag);
        wholeDocuments = m_bag
                             ->readProperty(QStringLiteral("ReturnFullDocument"), true,
                                 Vantry::PropertyBag::Kind::Boolean)
                             .toBool();
    }
    m_editor->setReturnFullDocument(wholeDocuments);

    createFileMenu();
    connect(m_editor, &Vantry::HTMLEditorComponent::HTMLChanged, this,
        [this] { statusBar()->showMessage(tr("Edited"), 2000); });
    connect(
        m_editor, &Vantry::HTMLEditorComponent::PropertyChanged, this, [this](const QString &name) {
            if (name == QLatin1String("isDirty"))
                setWindowModified(m_editor->isDirty());
        });
    // Queued: the title is read from the document, after the load has finished.
    connect(m_editor, &Vantry::HTMLEditorComponent::DocumentLoaded, this, &HostWindow::updateTitle,
        Qt::QueuedConnection);
    resize(1000, 720);
    updateTitle();
}

HostWindow::~HostWindow() = default;

void HostWindow::propertyBagError(const QString &message)
{
    statusBar()->showMessage(message);
    qWarning("%s", qPrintable(message));
}

void HostWindow::createFileMenu()
{
    using Vantry::HTMLEditorComponent;
    QMenu *menu = menuBar()->addMenu(tr("&File"));

    QAction *action = menu->addAction(QIcon::fromTheme(QStringLiteral("document-new")), tr("&New"),
        m_editor, &HTMLEditorComponent::FileNew);
    action->setShortcut(QKeySequence::New);

    action = menu->addAction(QIcon::fromTheme(QStringLiteral("document-open")), tr("&Open..."),
        this, [this] { m_editor->FileOpen(); });
    action->setShortcut(QKeySequence::Open);

    action = menu->addAction(QIcon::fromTheme(QStringLiteral("document-open-remote")),
        tr("Open &URL..."), this, &HostWindow::openUrl);
    action->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));

    menu->addSeparator();
    action = menu->addAction(QIcon::fromTheme(QStringLiteral("document-save")), tr("&Save"), this,
        [this] { m_editor->FileSave(); });
    action->setShortcut(QKeySequence::Save);

    action = menu->addAction(QIcon::fromTheme(QStringLiteral("document-save-as")),
        tr("Save &As..."), this, [this] { m_editor->FileSaveAs(); });
    action->setShortcut(QKeySequence::SaveAs);

    menu->addSeparator();
    action = menu->addAction(QIcon::fromTheme(QStringLiteral("document-print")), tr("&Print..."),
        this, [this] { m_editor->PrintHTML(); });
    action->setShortcut(QKeySequence::Print);

    menu->addSeparator();
    action = menu->addAction(
        QIcon::fromTheme(QStringLiteral("application-exit")), tr("&Quit"), this, &QWidget::close);
    action->setShortcut(QKeySequence::Quit);
    action->setMenuRole(QAction::QuitRole);

    // Dialogs the editor's toolbar does not offer.
    menu = menuBar()->addMenu(tr("F&ormat"));
    menu->addAction(tr("Style &Class..."), m_editor, &HTMLEditorComponent::SelectStyleDialog);
    menu->addAction(tr("&Flash Movie..."), m_editor, &HTMLEditorComponent::FlashMovieDialog);
}

void HostWindow::openFile(const QString &path)
{
    const QFileInfo info(path);
    // Relative images of a page opened from the command line show unless the settings
    // name a base address of their own.
    if (m_editor->BaseURL().isEmpty())
        m_editor->setBaseURL(
            QUrl::fromLocalFile(info.absolutePath() + QLatin1Char('/')).toString());
    m_editor->FileOpen(info.absoluteFilePath());
}

void HostWindow::openUrl()
{
    bool ok = false;
    const QString address = QInputDialog::getText(
        this, tr("Open URL"), tr("Address:"), QLineEdit::Normal, QStringLiteral("https://"), &ok);
    if (ok && !address.trimmed().isEmpty())
        m_editor->URLOpen(address.trimmed());
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

bool HostWindow::maySetDocumentAside()
{
    if (!m_editor->isDirty())
        return true;
    const auto answer = QMessageBox::question(this, windowTitle(),
        tr("The current document has changed.\r\n\r\nDo you want to save changes?"),
        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    if (answer == QMessageBox::Cancel)
        return false;
    if (answer == QMessageBox::Yes) {
        m_editor->FileSave();
        // A save that did not happen (cancelled, failed) keeps the window open.
        return !m_editor->isDirty();
    }
    return true;
}

void HostWindow::closeEvent(QCloseEvent *event)
{
    if (maySetDocumentAside())
        event->accept();
    else
        event->ignore();
}

void HostWindow::updateTitle()
{
    QString title = m_editor->isDocumentReady() ? m_editor->PageTitle() : QString();
    if (title.trimmed().isEmpty())
        title = tr("Untitled");
    // The platform adds the application's display name.
    setWindowTitle(tr("%1[*]").arg(title));
}
