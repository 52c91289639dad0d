#include "platform/webengine/scriptsource.h"

#include <QList>
#include <QStringView>

namespace Vantry::Platform {

QString compactScript(const QString &source)
{
    QString compact;
    compact.reserve(source.size());
    for (QStringView line : QStringView(source).split(u'\n')) {
        line = line.trimmed();
        if (line.isEmpty() || line.startsWith(u"//"))
            continue;
        if (line.contains(u'`') || line.endsWith(u'\\'))
            return source;
        compact += line;
        compact += u'\n';
    }
    return compact;
}

} // namespace Vantry::Platform
