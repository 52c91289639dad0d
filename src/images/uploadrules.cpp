#include "images/uploadrules.h"

#include "images/filenames.h"

#include <QStringList>
#include <QUrl>

namespace Vantry::Images {

namespace {

QLatin1Char slash()
{
    return QLatin1Char('/');
}

bool isAllowedNameCharacter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
        || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
        || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('-')
        || c == QLatin1Char('_') || c == QLatin1Char('.');
}

QString stripName(const QString &text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        if (c == QLatin1Char(' '))
            out += QLatin1Char('_');
        else if (isAllowedNameCharacter(c))
            out += c;
    }
    return out;
}

// A segment some server would not take as a plain name.
bool isSuspectSegment(const QString &segment)
{
    if (segment.startsWith(QLatin1Char('~')) || segment.contains(QLatin1Char('\\')))
        return true;
    bool onlyDotsAndSpaces = true;
    for (const QChar c : segment) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7f)
            return true;
        if (c != QLatin1Char('.') && c != QLatin1Char(' '))
            onlyDotsAndSpaces = false;
    }
    return onlyDotsAndSpaces && segment != QLatin1String(".") && segment != QLatin1String("..");
}

} // namespace

bool uploadSwitch(const QString &text)
{
    return text.trimmed().compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

QString remoteFileName(
    const QString &localPath, const QString &prefix, const QString &suffix, bool strip)
{
    QString name = localPath.mid(localPath.lastIndexOf(slash()) + 1);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    QString base = dot > 0 ? name.left(dot) : name;
    QString extension = dot > 0 ? name.mid(dot) : QString();
    base = prefix + base + suffix;
    if (strip) {
        base = stripName(base);
        extension = stripName(extension);
        if (extension == QLatin1String("."))
            extension.clear();
    }
    // A line break would end the server command the name travels in; no name needs one.
    for (QString *part : {&base, &extension}) {
        part->remove(slash());
        part->remove(QLatin1Char('\\'));
        part->removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    }
    if (base.isEmpty() || base == QLatin1String(".") || base == QLatin1String(".."))
        base = QStringLiteral("image");
    return base + extension;
}

NameCollision collisionRule(bool overwrite, bool incrementExisting)
{
    if (overwrite)
        return NameCollision::Overwrite;
    return incrementExisting ? NameCollision::Number : NameCollision::Refuse;
}

std::optional<QString> freeRemoteName(
    const QString &name, const QSet<QString> &existing, NameCollision rule)
{
    if (!existing.contains(name) || rule == NameCollision::Overwrite)
        return name;
    if (rule == NameCollision::Refuse)
        return std::nullopt;
    for (int counter = 1; counter <= maxFileNameNumber; ++counter) {
        QString candidate = incrementFileName(name, counter);
        if (!existing.contains(candidate))
            return candidate;
    }
    return std::nullopt;
}

std::optional<QString> normalRemoteFolder(const QString &path, const QString &base)
{
    if (path.contains(QLatin1Char('\\')))
        return std::nullopt;
    QStringList kept;
    if (!path.startsWith(slash())) {
        const std::optional<QString> start
            = base.isEmpty() ? QStringLiteral("/") : normalRemoteFolder(base);
        if (!start)
            return std::nullopt;
        kept = start->split(slash(), Qt::SkipEmptyParts);
    }
    const QStringList segments = path.split(slash(), Qt::SkipEmptyParts);
    for (const QString &segment : segments) {
        if (isSuspectSegment(segment))
            return std::nullopt;
        if (segment == QLatin1String("."))
            continue;
        if (segment == QLatin1String("..")) {
            if (kept.isEmpty())
                return std::nullopt;
            kept.removeLast();
            continue;
        }
        kept.append(segment);
    }
    return slash() + kept.join(slash());
}

bool isInsideFolder(const QString &folder, const QString &root)
{
    if (root == QLatin1String("/"))
        return folder.startsWith(slash());
    return folder == root || folder.startsWith(root + slash());
}

std::optional<QString> uploadRoot(const QString &restrictedDirectory)
{
    if (restrictedDirectory.trimmed().isEmpty())
        return QStringLiteral("/");
    return normalRemoteFolder(restrictedDirectory.trimmed(), QStringLiteral("/"));
}

QString startFolder(const QString &initialDir, const QString &root)
{
    if (initialDir.trimmed().isEmpty())
        return root;
    const std::optional<QString> initial = normalRemoteFolder(initialDir.trimmed(), root);
    return initial && isInsideFolder(*initial, root) ? *initial : root;
}

std::optional<QString> resolveUploadFolder(
    const QString &root, const QString &current, const QString &requested)
{
    const std::optional<QString> folder = normalRemoteFolder(requested, current);
    if (!folder || !isInsideFolder(*folder, root))
        return std::nullopt;
    return folder;
}

QString remotePath(const QString &folder, const QString &name)
{
    if (folder.endsWith(slash()))
        return folder + name;
    return folder + slash() + name;
}

QString publishedAddress(const QString &baseURL, const QString &imageVCDirectory,
    const QString &uploadRoot, const QString &remoteFilePath)
{
    QString below = remoteFilePath;
    if (uploadRoot != QLatin1String("/") && isInsideFolder(remoteFilePath, uploadRoot))
        below = remoteFilePath.mid(uploadRoot.size());
    QStringList segments = below.split(slash(), Qt::SkipEmptyParts);
    for (QString &segment : segments)
        segment = QString::fromLatin1(QUrl::toPercentEncoding(segment));

    QString address = imageVCDirectory.trimmed();
    if (!address.isEmpty() && !address.endsWith(slash()))
        address += slash();
    address += segments.join(slash());
    if (baseURL.trimmed().isEmpty())
        return address;
    QString base = baseURL.trimmed();
    if (!base.endsWith(slash()))
        base += slash();
    return QUrl(base).resolved(QUrl(address, QUrl::StrictMode)).toString(QUrl::FullyEncoded);
}

} // namespace Vantry::Images
