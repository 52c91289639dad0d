#include "control/appdirectory.h"

#include <QDir>
#include <QStandardPaths>

namespace Vantry::Control {

QString applicationDirectory(const QString &configuredPath)
{
    if (configuredPath.isEmpty()) {
        const QString relative = QStringLiteral("Vantry Technologies/HTML Editor Control");
        const QString found = QStandardPaths::locate(
            QStandardPaths::GenericDataLocation, relative, QStandardPaths::LocateDirectory);
        if (!found.isEmpty())
            return found;
        return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
            + QLatin1Char('/') + relative;
    }

    QString path = configuredPath;
    // The root keeps its only separator.
    if (path.size() > 1 && (path.endsWith(QLatin1Char('/')) || path.endsWith(QDir::separator())))
        path.chop(1);
    if (!QDir(path).exists())
        QDir().mkpath(path);
    return path;
}

} // namespace Vantry::Control
