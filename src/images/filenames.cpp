#include "images/filenames.h"

namespace Vantry::Images {

QString incrementFileName(const QString &fileName, int counter)
{
    const QString number = QString(QStringLiteral("000") + QString::number(counter)).right(3);
    const qsizetype dot = fileName.lastIndexOf(QLatin1Char('.'));
    if (dot < 0)
        return fileName + QLatin1Char('_') + number;
    return fileName.left(dot) + QLatin1Char('_') + number + fileName.mid(dot);
}

} // namespace Vantry::Images
