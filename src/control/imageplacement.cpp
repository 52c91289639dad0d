#include "control/imageplacement.h"

#include "commands/selectionaccess.h"
#include "control/settings.h"
#include "images/imagenames.h"
#include "platform/designsurface.h"

#include <VantryHTMLEditor/UserPrompts.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <utility>

namespace Vantry::Images {

using Platform::DesignSurface;
using Platform::Element;

namespace {

const QString imageFilter
    = QStringLiteral("Images (*.gif *.jpg *.jpeg *.png *.bmp *.svg *.webp);;All Files (*)");

QString withoutFileScheme(const QString &path)
{
    QString text = path;
    text.remove(QStringLiteral("file://"), Qt::CaseInsensitive);
    return text;
}

// The parts of a '/'-separated server path: "/www/img/a.jpg" is "a.jpg" in "/www/img/".
QString remoteName(const QString &remotePath)
{
    return remotePath.mid(remotePath.lastIndexOf(QLatin1Char('/')) + 1);
}

QString remoteFolder(const QString &remotePath)
{
    return remotePath.left(remotePath.lastIndexOf(QLatin1Char('/')) + 1);
}

} // namespace

CopyError CopyImageFile(const QString &source, const QString &destination)
{
    const QString shown = QDir::toNativeSeparators(source);
    const QFileInfo from(source);
    if (!from.isFile())
        return QStringLiteral("The image %1 cannot be copied: there is no such file.").arg(shown);
    if (from.canonicalFilePath() == QFileInfo(destination).canonicalFilePath())
        return {};
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return QStringLiteral("The image %1 cannot be read: %2.").arg(shown, in.errorString());
    QSaveFile out(destination);
    const auto failed = [&](const QString &reason) {
        return QStringLiteral("The image %1 cannot be copied to %2: %3.")
            .arg(shown, QDir::toNativeSeparators(destination), reason);
    };
    if (!out.open(QIODevice::WriteOnly))
        return failed(out.errorString());
    while (!in.atEnd()) {
        const QByteArray chunk = in.read(1 << 20);
        if (chunk.isEmpty() && in.error() != QFileDevice::NoError)
            return failed(in.errorString());
        if (out.write(chunk) != chunk.size())
            return failed(out.errorString());
    }
    if (!out.commit())
        return failed(out.errorString());
    return {};
}

ImagePlacement::ImagePlacement(const Control::Settings &settings, DesignSurface &surface,
    Commands::SelectionAccess &selection, Platform::DocumentReferences &references, Hooks hooks)
    : m_settings(settings)
    , m_surface(surface)
    , m_selection(selection)
    , m_references(references)
    , m_hooks(std::move(hooks))
{ }

QString ImagePlacement::imageFolder() const
{
    return folderWithSeparator(m_settings.ImageDirectory);
}

bool ImagePlacement::copyIntoImageFolder(const QString &source, const QString &name)
{
    const QString folder = imageFolder();
    if (folder.isEmpty()) {
        m_hooks.prompts().critical(
            QStringLiteral("The image cannot be copied: no image folder is set (ImageDirectory)."));
        return false;
    }
    if (!QDir().mkpath(folder)) {
        m_hooks.prompts().critical(QStringLiteral("The image folder %1 cannot be created.")
                                       .arg(QDir::toNativeSeparators(folder)));
        return false;
    }
    const CopyError error = CopyImageFile(source, folder + name);
    if (!error.isEmpty()) {
        m_hooks.prompts().critical(error);
        return false;
    }
    return true;
}

QString ImagePlacement::placeInsertedImage(const QString &path)
{
    const QString source = withoutFileScheme(path);
    if (m_settings.UploadImagesWhenInserted && m_hooks.upload) {
        const std::optional<UploadedImage> uploaded = m_hooks.upload(source);
        if (!uploaded)
            return {};
        m_placed.append({remoteName(uploaded->remotePath), remoteFolder(uploaded->remotePath)});
        return uploaded->address;
    }
    if (!m_settings.CopyImagesWhenInserted || m_settings.ImageDirectory.isEmpty())
        return path;
    const QString fileName = GetImageFileName(QDir::toNativeSeparators(source));
    const QString folder = imageFolder();
    const bool inFolder
        = QFileInfo(source).canonicalFilePath() == QFileInfo(folder + fileName).canonicalFilePath();
    const QString name = inFolder || !m_settings.IncermentExistingFileNames
        ? fileName
        : GetUniqueImageFileName(fileName);
    if (!copyIntoImageFolder(source, name))
        return {};
    m_placed.append({name, GetFolderFromPath(folder)});
    return insertedImageSource(folder + name, m_settings.BaseURL, m_settings.ImageVCDirectory);
}

void ImagePlacement::announcePlaced(bool inserted)
{
    const QList<Placed> placed = std::exchange(m_placed, {});
    if (!inserted || placed.isEmpty())
        return;
    for (const Placed &image : placed)
        m_hooks.imageInserted(image.fileName, image.folder);
    m_hooks.htmlChanged();
}

bool ImagePlacement::insertUploadedImage(const UploadedImage &image)
{
    const auto refuse = [&](const QString &why) {
        m_hooks.prompts().information(
            QStringLiteral("The image %1 is on the server at %2 but was not inserted: %3")
                .arg(remoteName(image.remotePath), image.address, why));
        return false;
    };
    if (!m_hooks.isReady() || (m_hooks.designViewActive && !m_hooks.designViewActive()))
        return refuse(QStringLiteral("the document can only take it in the design view."));
    const Platform::TextRange range = m_surface.selectionRange();
    if (m_surface.lastCallFailed()
        || !m_surface.pasteHTML(
            range, QStringLiteral("<img src=\"%1\">").arg(image.address.toHtmlEscaped())))
        return refuse(QStringLiteral("the document could not be changed."));
    m_hooks.imageInserted(remoteName(image.remotePath), remoteFolder(image.remotePath));
    m_hooks.htmlChanged();
    m_hooks.markDirty();
    return true;
}

QString ImagePlacement::GetUniqueImageFileName(const QString &fileName) const
{
    const QString folder = imageFolder();
    QString candidate = fileName;
    for (int counter = 1; QFileInfo::exists(folder + candidate); ++counter) {
        if (counter > maxFileNameCounter)
            break;
        candidate = IncrementFileName(fileName, counter);
    }
    return candidate;
}

void ImagePlacement::CopyImageFiles(const QString &toLocation)
{
    const QFileInfo target(toLocation);
    if (!target.isDir() && !QDir().mkdir(toLocation)) {
        m_hooks.prompts().critical(QStringLiteral("The folder %1 cannot be created.")
                                       .arg(QDir::toNativeSeparators(toLocation)));
        return;
    }
    const QList<Element> images = m_surface.images();
    for (const Element &image : images) {
        const QString src = withoutFileScheme(m_surface.attribute(image, QStringLiteral("src")));
        if (m_surface.lastCallFailed())
            return;
        const CopyError error = CopyImageFile(src, toLocation + GetImageFileName(src));
        if (!error.isEmpty()) {
            m_hooks.prompts().critical(error);
            return;
        }
    }
}

void ImagePlacement::ChangeImagePath(const QString &sPath)
{
    if (!m_hooks.isReady())
        return;
    const QList<Element> images = m_surface.images();
    for (const Element &image : images) {
        const QString src = m_surface.attribute(image, QStringLiteral("src"));
        if (m_surface.lastCallFailed()
            || !m_surface.setAttribute(image, QStringLiteral("src"), sPath + GetImageFileName(src)))
            return;
    }
}

void ImagePlacement::ChangeImageFromSelectedElement(
    const QString &sImagePath, const QString &sImageFileName)
{
    Element element;
    bool image = false;
    if (m_selection.findSelectedElementByTag(QStringLiteral("IMG"))) {
        element = m_references.found;
        image = true;
    } else if (m_selection.findSelectedElementByTag(QStringLiteral("TABLE"))) {
        element = m_references.found;
    } else {
        return;
    }

    QString folder = sImagePath;
    QString fileName = sImageFileName;
    if (folder.isEmpty()) {
        const QString picked = m_hooks.prompts().openFileName(
            QStringLiteral("Pick Image"), imageFilter, m_settings.ImageDirectory);
        folder = GetFolderFromPath(picked);
        fileName = GetImageFileName(picked);
    }
    if (fileName.isEmpty())
        return;
    const QString newName = GetUniqueImageFileName(fileName);
    if (!copyIntoImageFolder(folderWithSeparator(folder) + fileName, newName))
        return;
    const QString filePath = GetFolderFromPath(imageFolder());
    using Edit = DesignSurface::FieldEdit;
    const QList<Edit> edits = image
        ? QList<Edit>{{QStringLiteral("src"), filePath + newName},
            {QStringLiteral("width"), QString(), true}, {QStringLiteral("height"), QString(), true},
            {QStringLiteral("width"), std::nullopt}, {QStringLiteral("height"), std::nullopt}}
        : QList<Edit>{{QStringLiteral("background"), filePath + newName}};
    if (!m_surface.editElementFields(element, edits))
        return;
    if (image)
        m_hooks.imageInserted(newName, filePath);
    m_hooks.htmlChanged();
    m_hooks.markDirty();
}

void ImagePlacement::RemoveImageFromSelectedElement()
{
    // A selected image only ever had an unknown property cleared, which changed nothing.
    m_selection.findSelectedElementByTag(QStringLiteral("IMG"));
    if (m_selection.findSelectedElementByTag(QStringLiteral("TABLE")))
        m_surface.removeAttribute(m_references.found, QStringLiteral("background"));
}

void ImagePlacement::doubleClicked()
{
    if (!m_settings.ChangeImageOnDblClick || !m_hooks.isReady())
        return;
    const Element element = m_selection.selectedElement();
    if (element.isNull())
        return;
    const QString tag = m_surface.tagName(element).toLower();
    if (m_surface.lastCallFailed() || tag.isEmpty()
        || !m_settings.ChangeImageOnDblClickTags.toLower().contains(tag))
        return;
    ChangeImageFromSelectedElement(QString(), QString());
}

} // namespace Vantry::Images
