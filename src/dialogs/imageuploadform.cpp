#include "dialogs/imageuploadform.h"

#include "images/uploadflow.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include <limits>

namespace Vantry::Dialogs {

namespace {

// Progress bars count in int; large files are shown in kilobytes.
int barValue(qint64 bytes)
{
    return int(qMin<qint64>(bytes / 1024, std::numeric_limits<int>::max()));
}

QString serverLabel(const QString &server)
{
    const QString text = server.trimmed();
    const QUrl url(text.contains(QLatin1String("://")) ? text : QStringLiteral("ftp://") + text);
    if (!url.isValid())
        return text;
    return url.port() > 0 ? url.host() + QLatin1Char(':') + QString::number(url.port())
                          : url.host();
}

} // namespace

ImageUploadForm::ImageUploadForm(const ImageUploadValues &values, QWidget *parent)
    : QDialog(parent)
    , m_values(values)
    , m_flow(std::make_unique<Images::UploadFlow>(values))
{
    setObjectName(QStringLiteral("ImageUpload"));
    setWindowTitle(QStringLiteral("Upload Images"));
    m_values.files.clear();
    m_values.remotePaths.clear();
    m_values.addresses.clear();
    m_values.Cancel = true;

    auto *server = new QLabel(
        QStringLiteral("%1 as %2")
            .arg(serverLabel(values.FTP_ServerName),
                values.FTP_UserName.isEmpty() ? QStringLiteral("anonymous") : values.FTP_UserName),
        this);
    m_txtFolder = new QLineEdit(this);
    m_txtFolder->setObjectName(QStringLiteral("txtFolder"));
    m_lstFolders = new QListWidget(this);
    m_lstFolders->setObjectName(QStringLiteral("lstFolders"));
    m_lstFiles = new QListWidget(this);
    m_lstFiles->setObjectName(QStringLiteral("lstFiles"));
    m_cmdAdd = new QPushButton(QStringLiteral("&Add Files..."), this);
    m_cmdRemove = new QPushButton(QStringLiteral("&Remove"), this);
    m_prgFile = new QProgressBar(this);
    m_prgTotal = new QProgressBar(this);
    m_lblStatus = new QLabel(this);
    m_lblStatus->setWordWrap(true);
    m_cmdUpload = new QPushButton(QStringLiteral("&Upload"), this);
    m_cmdUpload->setDefault(true);
    m_cmdCancel = new QPushButton(QStringLiteral("Close"), this);

    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Server:"), server);
    form->addRow(QStringLiteral("&Folder:"), m_txtFolder);
    form->addRow(QString(), m_lstFolders);
    auto *fileButtons = new QVBoxLayout;
    fileButtons->addWidget(m_cmdAdd);
    fileButtons->addWidget(m_cmdRemove);
    fileButtons->addStretch();
    auto *fileRow = new QHBoxLayout;
    fileRow->addWidget(m_lstFiles);
    fileRow->addLayout(fileButtons);
    form->addRow(QStringLiteral("Files:"), fileRow);
    form->addRow(QStringLiteral("This file:"), m_prgFile);
    form->addRow(QStringLiteral("All files:"), m_prgTotal);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_cmdUpload);
    buttons->addWidget(m_cmdCancel);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_lblStatus);
    layout->addLayout(buttons);
    resize(520, 480);

    connect(
        m_txtFolder, &QLineEdit::returnPressed, this, [this] { enterFolder(m_txtFolder->text()); });
    connect(m_lstFolders, &QListWidget::itemActivated, this,
        [this](QListWidgetItem *item) { enterFolder(item->text()); });
    connect(m_cmdAdd, &QPushButton::clicked, this, &ImageUploadForm::chooseFiles);
    connect(
        m_cmdRemove, &QPushButton::clicked, this, [this] { removeFile(m_lstFiles->currentRow()); });
    connect(m_cmdUpload, &QPushButton::clicked, this, &ImageUploadForm::startUpload);
    connect(m_cmdCancel, &QPushButton::clicked, this, &ImageUploadForm::cancelOrClose);

    connect(m_flow.get(), &Images::UploadFlow::folderListed, this, &ImageUploadForm::showFolder);
    connect(m_flow.get(), &Images::UploadFlow::failed, this, [this](const QString &message) {
        showStatus(message, true);
        updateButtons();
    });
    connect(m_flow.get(), &Images::UploadFlow::fileProgress, this,
        [this](int index, qint64 sent, qint64 total) {
            m_prgFile->setMaximum(qMax(1, barValue(total)));
            m_prgFile->setValue(barValue(sent));
            showStatus(QStringLiteral("Uploading %1 (%2 of %3)...")
                           .arg(QFileInfo(m_files.value(index)).fileName())
                           .arg(index + 1)
                           .arg(m_files.size()),
                false);
        });
    connect(
        m_flow.get(), &Images::UploadFlow::totalProgress, this, [this](qint64 sent, qint64 total) {
            m_prgTotal->setMaximum(qMax(1, barValue(total)));
            m_prgTotal->setValue(barValue(sent));
        });
    connect(m_flow.get(), &Images::UploadFlow::imageUploaded, this, &ImageUploadForm::onUploaded);
    connect(m_flow.get(), &Images::UploadFlow::finished, this, &ImageUploadForm::onFinished);

    addFiles(values.files);
    m_txtFolder->setText(m_flow->folder());
    if (m_flow->open())
        showStatus(QStringLiteral("Connecting..."), false);
    updateButtons();
}

ImageUploadForm::~ImageUploadForm() = default;

QString ImageUploadForm::status() const
{
    return m_lblStatus->text();
}

void ImageUploadForm::showStatus(const QString &text, bool error)
{
    m_lblStatus->setText(text);
    m_lblStatus->setStyleSheet(error ? QStringLiteral("color: #b00020;") : QString());
}

void ImageUploadForm::chooseFiles()
{
    const QString filter
        = QStringLiteral("Images (*.png *.jpg *.jpeg *.gif *.svg *.webp *.bmp);;All files (*)");
    QStringList chosen;
    if (m_values.FTP_AllowMultiableFiles)
        chosen
            = QFileDialog::getOpenFileNames(this, QStringLiteral("Images to Upload"), {}, filter);
    else if (const QString one
             = QFileDialog::getOpenFileName(this, QStringLiteral("Image to Upload"), {}, filter);
             !one.isEmpty())
        chosen.append(one);
    addFiles(chosen);
}

void ImageUploadForm::addFiles(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (m_files.contains(path))
            continue;
        if (!m_values.FTP_AllowMultiableFiles) {
            m_files.clear();
            m_lstFiles->clear();
        }
        m_files.append(path);
        m_lstFiles->addItem(QFileInfo(path).fileName());
        m_lstFiles->item(m_lstFiles->count() - 1)->setToolTip(path);
    }
    updateButtons();
}

void ImageUploadForm::removeFile(int row)
{
    if (row < 0 || row >= m_files.size() || m_flow->isBusy())
        return;
    m_files.removeAt(row);
    delete m_lstFiles->takeItem(row);
    updateButtons();
}

bool ImageUploadForm::enterFolder(const QString &folder)
{
    const bool started = m_flow->browse(folder);
    if (!started)
        m_txtFolder->setText(m_flow->folder());
    updateButtons();
    return started;
}

void ImageUploadForm::showFolder(const QString &folder, const QStringList &folders)
{
    m_txtFolder->setText(folder);
    m_lstFolders->clear();
    if (folder != m_flow->root())
        m_lstFolders->addItem(QStringLiteral(".."));
    m_lstFolders->addItems(folders);
    showStatus(QString(), false);
    updateButtons();
}

bool ImageUploadForm::startUpload()
{
    m_prgFile->setValue(0);
    m_prgTotal->setValue(0);
    const bool started = m_flow->upload(m_files);
    if (started)
        showStatus(QStringLiteral("Preparing the upload..."), false);
    updateButtons();
    return started;
}

void ImageUploadForm::onUploaded(
    const QString &localPath, const QString &remotePath, const QString &address)
{
    m_values.files.append(localPath);
    m_values.remotePaths.append(remotePath);
    m_values.addresses.append(address);
    m_values.remoteFolder = m_flow->folder();
    m_values.Cancel = false;
}

void ImageUploadForm::onFinished(bool complete)
{
    if (m_closeWhenDone) {
        m_closeWhenDone = false;
        reject();
        return;
    }
    if (complete) {
        showStatus(m_files.size() == 1
                ? QStringLiteral("The file is uploaded.")
                : QStringLiteral("%1 files are uploaded.").arg(m_files.size()),
            false);
        m_files.clear();
        m_lstFiles->clear();
    }
    updateButtons();
}

void ImageUploadForm::cancelOrClose()
{
    if (m_flow->isBusy()) {
        m_flow->cancel();
        showStatus(QStringLiteral("Cancelling..."), false);
        updateButtons();
        return;
    }
    if (m_values.remotePaths.isEmpty())
        QDialog::reject();
    else
        accept();
}

void ImageUploadForm::reject()
{
    // Closing while a file goes up cancels it and waits for the server to be tidied up.
    if (m_flow->isBusy()) {
        m_closeWhenDone = true;
        m_flow->cancel();
        return;
    }
    if (m_values.remotePaths.isEmpty())
        QDialog::reject();
    else
        accept();
}

void ImageUploadForm::updateButtons()
{
    const bool busy = m_flow->isBusy();
    m_cmdUpload->setEnabled(!busy && !m_files.isEmpty() && m_flow->settingsError().isEmpty());
    m_cmdAdd->setEnabled(!busy);
    m_cmdRemove->setEnabled(!busy && !m_files.isEmpty());
    m_lstFolders->setEnabled(!busy);
    m_txtFolder->setEnabled(!busy);
    m_cmdCancel->setText(busy ? QStringLiteral("Cancel") : QStringLiteral("Close"));
}

} // namespace Vantry::Dialogs
