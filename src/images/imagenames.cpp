#include "images/imagenames.h"

#include <QDir>
#include <QUrl>

namespace Vantry::Images {

namespace {

QString withoutFileScheme(const QString &path)
{
    QString text = path;
    text.remove(QStringLiteral("file://"), Qt::CaseInsensitive);
    return text;
}

} // namespace

QString GetFolderFromPath(const QString &path)
{
    const QString text = withoutFileScheme(path);
    qsizetype cut = text.lastIndexOf(QLatin1Char('/'));
    if (cut < 0)
        cut = text.lastIndexOf(QLatin1Char('\\'));
    return cut < 0 ? QString() : text.left(cut + 1);
}

QString GetImageFileName(const QString &address)
{
    qsizetype cut = address.lastIndexOf(QLatin1Char('\\'));
    if (cut < 0)
        cut = address.lastIndexOf(QLatin1Char('/'));
    return cut < 0 ? address : address.mid(cut + 1);
}

QString IncrementFileName(const QString &fileName, int counter)
{
    const QString number = QString(QStringLiteral("000") + QString::number(counter)).right(3);
    const qsizetype dot = fileName.lastIndexOf(QLatin1Char('.'));
    if (dot < 0)
        return fileName + QLatin1Char('_') + number;
    return fileName.left(dot) + QLatin1Char('_') + number + fileName.mid(dot);
}

QString folderWithSeparator(const QString &folder)
{
    if (folder.isEmpty() || folder.endsWith(QLatin1Char('/')) || folder.endsWith(QLatin1Char('\\')))
        return folder;
    return folder + QDir::separator();
}

QString insertedImageSource(
    const QString &copyPath, const QString &baseURL, const QString &vcDirectory)
{
    const QString fileName = GetImageFileName(QDir::toNativeSeparators(copyPath));
    if (!vcDirectory.isEmpty()) {
        const bool separated
            = vcDirectory.endsWith(QLatin1Char('/')) || vcDirectory.endsWith(QLatin1Char('\\'));
        return vcDirectory + (separated ? QString() : QStringLiteral("/")) + fileName;
    }
    const QString copy = QDir::cleanPath(QDir::fromNativeSeparators(copyPath));
    const QUrl base(QDir::fromNativeSeparators(baseURL));
    const bool webBase = !baseURL.isEmpty() && base.isValid() && !base.isLocalFile()
        && !base.scheme().isEmpty() && !QDir::isAbsolutePath(baseURL);
    if (webBase)
        return QUrl::fromLocalFile(copy).toString(QUrl::FullyEncoded);
    if (!baseURL.isEmpty()) {
        const QString baseFolder
            = GetFolderFromPath(base.isLocalFile() ? base.toLocalFile() : baseURL);
        if (!baseFolder.isEmpty()) {
            const QString folder = QDir::cleanPath(QDir::fromNativeSeparators(baseFolder));
            const QString relative = QDir(folder).relativeFilePath(copy);
            if (!relative.startsWith(QLatin1String("..")) && !QDir::isAbsolutePath(relative))
                return relative;
        }
    }
    return QDir::toNativeSeparators(copy);
}

} // namespace Vantry::Images
