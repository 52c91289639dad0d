#include <VantryHTMLEditor/PropertyBag.h>

#include <QDebug>
#include <QFile>
#include <QSettings>

#include <cmath>
#include <limits>
#include <optional>

namespace Vantry {

namespace {

constexpr qint64 integerMin = std::numeric_limits<qint16>::min();
constexpr qint64 integerMax = std::numeric_limits<qint16>::max();

bool isText(const QVariant &value)
{
    const int type = value.typeId();
    return type == QMetaType::QString || type == QMetaType::QByteArray;
}

QString text(const QVariant &value)
{
    return value.typeId() == QMetaType::QByteArray ? QString::fromUtf8(value.toByteArray())
                                                   : value.toString();
}

bool isSignedIntegral(int type)
{
    switch (type) {
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::SChar:
    case QMetaType::Char:
        return true;
    default:
        return false;
    }
}

bool isUnsignedIntegral(int type)
{
    switch (type) {
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
    case QMetaType::UShort:
    case QMetaType::UChar:
        return true;
    default:
        return false;
    }
}

bool isFloating(int type)
{
    return type == QMetaType::Double || type == QMetaType::Float;
}

bool isNumber(const QVariant &value)
{
    const int type = value.typeId();
    return isSignedIntegral(type) || isUnsignedIntegral(type) || isFloating(type);
}

// The whole number held by value, clamped into qint64 so that range checks stay simple;
// empty when value is not a whole number (text that is not one, a fraction, another type).
std::optional<qint64> wholeNumber(const QVariant &value)
{
    const int type = value.typeId();
    if (isSignedIntegral(type))
        return value.toLongLong();
    if (isUnsignedIntegral(type))
        return qint64(qMin(value.toULongLong(), quint64(std::numeric_limits<qint64>::max())));
    if (isFloating(type)) {
        const double number = value.toDouble();
        if (!std::isfinite(number) || std::trunc(number) != number)
            return std::nullopt;
        return qint64(qBound(-9.0e18, number, 9.0e18));
    }
    if (isText(value)) {
        bool ok = false;
        const qint64 number = text(value).trimmed().toLongLong(&ok, 10);
        if (ok)
            return number;
    }
    return std::nullopt;
}

// How a value appears in messages: text quoted and shortened, numbers as they are, other
// kinds by their type so that no structured content ends up in a log.
QString describe(const QVariant &value)
{
    constexpr qsizetype maxShown = 60;
    if (isText(value)) {
        const QString shown = text(value);
        if (shown.size() > maxShown)
            return u'"' + shown.left(maxShown - 3) + QStringLiteral("...\"");
        return u'"' + shown + u'"';
    }
    if (value.typeId() == QMetaType::Bool || isNumber(value))
        return value.toString();
    return QStringLiteral("a value of type ") + QString::fromLatin1(value.metaType().name());
}

QString propertyPrefix(const QString &name)
{
    return QStringLiteral("Property \"") + name + QStringLiteral("\": ");
}

// Small integer kinds would otherwise be written by QSettings as opaque @Variant blobs.
QVariant storable(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Char:
        return value.toInt();
    default:
        return value;
    }
}

// The value of key in section of an INI file, read the way QSettings reads one text but
// with commas kept as they stand: QSettings splits an unquoted value at its commas and
// trims around them, which loses a password such as S3cret,Passw0rd as a person wrote it.
std::optional<QString> iniText(const QString &fileName, const QString &section, const QString &key)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QString content = QString::fromUtf8(file.readAll());
    QString current = QStringLiteral("General");
    std::optional<QString> raw;
    for (const QStringView line : QStringView(content).split(u'\n')) {
        const QStringView trimmed = line.trimmed();
        if (trimmed.startsWith(u'[') && trimmed.endsWith(u']')) {
            current = trimmed.sliced(1, trimmed.size() - 2).trimmed().toString();
            continue;
        }
        const qsizetype equals = trimmed.indexOf(u'=');
        if (trimmed.startsWith(u';') || equals < 0 || current != section
            || trimmed.first(equals).trimmed() != key)
            continue;
        raw = trimmed.sliced(equals + 1).trimmed().toString(); // a later line wins, as in QSettings
    }
    if (!raw)
        return std::nullopt;

    static const QHash<QChar, QChar> escapes{{u'a', u'\a'}, {u'b', u'\b'}, {u'f', u'\f'},
        {u'n', u'\n'}, {u'r', u'\r'}, {u't', u'\t'}, {u'v', u'\v'}, {u'"', u'"'}, {u'?', u'?'},
        {u'\'', u'\''}, {u'\\', u'\\'}};
    QString value;
    bool quoted = false;
    qsizetype keep = 0; // spaces before this length came from quotes and stay
    for (qsizetype i = 0; i < raw->size(); ++i) {
        const QChar c = raw->at(i);
        if (c == u'"') {
            quoted = !quoted;
            keep = value.size();
        } else if (c == u';' && !quoted) {
            break;
        } else if (c == u'\\' && i + 1 < raw->size()) {
            const QChar next = raw->at(++i);
            if (next == u'x') {
                qsizetype end = i + 1;
                while (end < raw->size() && end < i + 5
                    && QStringLiteral("0123456789abcdefABCDEF").contains(raw->at(end)))
                    ++end;
                value.append(
                    QChar(char16_t(raw->sliced(i + 1, end - i - 1).toUShort(nullptr, 16))));
                i = end - 1;
            } else {
                value.append(escapes.value(next, next));
            }
            keep = value.size();
        } else {
            value.append(c);
            if (quoted)
                keep = value.size();
        }
    }
    while (value.size() > keep && value.back().isSpace())
        value.chop(1);
    if (value.startsWith(QStringLiteral("@@")))
        value.remove(0, 1);
    return value;
}

} // namespace

class PropertyBag::Private
{
public:
    QStringList errors;
    ErrorReceiver *receiver = nullptr;
};

PropertyBag::ErrorReceiver::~ErrorReceiver() = default;

PropertyBag::PropertyBag()
    : d(std::make_unique<Private>())
{ }

PropertyBag::~PropertyBag() = default;

QStringList PropertyBag::errors() const
{
    return d->errors;
}

void PropertyBag::setErrorReceiver(ErrorReceiver *receiver)
{
    d->receiver = receiver;
}

void PropertyBag::reportError(const QString &message)
{
    d->errors.append(message);
    if (d->receiver)
        d->receiver->propertyBagError(message);
    else
        qWarning().noquote() << message;
}

QVariant PropertyBag::convert(const QString &name, const QVariant &raw, Kind kind, QString *error)
{
    const auto fail = [&](const QString &reason) {
        if (error)
            *error = propertyPrefix(name) + reason;
        return QVariant();
    };

    switch (kind) {
    case Kind::String:
        if (isText(raw))
            return text(raw);
        if (raw.typeId() == QMetaType::Bool || isNumber(raw))
            return raw.toString();
        return fail(QStringLiteral("a stored value of type ")
            + QString::fromLatin1(raw.metaType().name())
            + QStringLiteral(" cannot be read as a String"));

    case Kind::Boolean: {
        if (raw.typeId() == QMetaType::Bool)
            return raw.toBool();
        if (isText(raw)) {
            const QString word = text(raw).trimmed();
            if (word.compare(QLatin1StringView("true"), Qt::CaseInsensitive) == 0)
                return true;
            if (word.compare(QLatin1StringView("false"), Qt::CaseInsensitive) == 0)
                return false;
        }
        // -1 is the interface's True; 1 is accepted because other writers use it.
        const std::optional<qint64> number = wholeNumber(raw);
        if (number && *number >= -1 && *number <= 1)
            return *number != 0;
        return fail(QStringLiteral("the stored value ") + describe(raw)
            + QStringLiteral(" is not a Boolean (true, false, -1, 0 or 1)"));
    }

    case Kind::Integer: {
        // A truth value is not a number here, even though QVariant would convert it.
        const std::optional<qint64> number
            = raw.typeId() == QMetaType::Bool ? std::nullopt : wholeNumber(raw);
        if (!number)
            return fail(QStringLiteral("the stored value ") + describe(raw)
                + QStringLiteral(" is not an Integer"));
        if (*number < integerMin || *number > integerMax)
            return fail(QStringLiteral("the stored value ") + describe(raw)
                + QStringLiteral(" is outside the Integer range -32768 to 32767"));
        return int(*number);
    }
    }
    return fail(QStringLiteral("unknown property kind"));
}

QVariant PropertyBag::readProperty(const QString &name, const QVariant &defaultValue, Kind kind)
{
    const QVariant raw = rawRead(name);
    if (!raw.isValid())
        return defaultValue;

    QString error;
    const QVariant value = convert(name, raw, kind, &error);
    if (value.isValid())
        return value;
    reportError(error + QStringLiteral("; the default ") + describe(defaultValue)
        + QStringLiteral(" is used instead"));
    return defaultValue;
}

void PropertyBag::writeProperty(
    const QString &name, const QVariant &value, const QVariant &defaultValue)
{
    // Values equal to their default are stored too, so that a saved bag lists every
    // property for whoever reads or edits it.
    Q_UNUSED(defaultValue)
    rawWrite(name, storable(value));
}

class MemoryPropertyBag::Private
{
public:
    QHash<QString, QVariant> values;
};

MemoryPropertyBag::MemoryPropertyBag()
    : d(std::make_unique<Private>())
{ }

MemoryPropertyBag::~MemoryPropertyBag() = default;

bool MemoryPropertyBag::contains(const QString &name) const
{
    return d->values.contains(name);
}

QVariant MemoryPropertyBag::value(const QString &name) const
{
    return d->values.value(name);
}

void MemoryPropertyBag::setValue(const QString &name, const QVariant &value)
{
    d->values.insert(name, value);
}

QStringList MemoryPropertyBag::keys() const
{
    return d->values.keys();
}

QVariant MemoryPropertyBag::rawRead(const QString &name) const
{
    return d->values.value(name);
}

void MemoryPropertyBag::rawWrite(const QString &name, const QVariant &value)
{
    d->values.insert(name, value);
}

void MemoryPropertyBag::rawRemove(const QString &name)
{
    d->values.remove(name);
}

class IniPropertyBag::Private
{
public:
    Private(const QString &fileName, const QString &group)
        : settings(fileName, QSettings::IniFormat)
        , group(group)
    { }

    QString key(const QString &name) const { return group.isEmpty() ? name : group + u'/' + name; }

    QSettings settings;
    QString group;
    // A file QSettings could not parse is never rewritten (that would drop the lines it
    // skipped); changes to it are held here instead.
    bool malformed = false;
    QHash<QString, QVariant> unsaved;
};

IniPropertyBag::IniPropertyBag(const QString &fileName, const QString &group)
    : d(std::make_unique<Private>(fileName, group))
{
    switch (d->settings.status()) {
    case QSettings::NoError:
        break;
    case QSettings::AccessError:
        reportError(
            QStringLiteral("Property file \"") + fileName + QStringLiteral("\" cannot be read"));
        break;
    case QSettings::FormatError:
        d->malformed = true;
        reportError(QStringLiteral("Property file \"") + fileName
            + QStringLiteral("\" is malformed; the values that could be read are used "
                             "and changes will not be saved to it"));
        break;
    }
}

IniPropertyBag::~IniPropertyBag()
{
    // The host's handler may refer to objects already gone, so a failure this late only
    // goes to the log.
    if (d->malformed || d->settings.status() != QSettings::NoError)
        return;
    d->settings.sync();
    if (d->settings.status() != QSettings::NoError)
        qWarning().noquote() << QStringLiteral("Property file \"") + fileName()
                + QStringLiteral("\" could not be written");
}

bool IniPropertyBag::sync()
{
    if (d->malformed) {
        reportError(QStringLiteral("Property file \"") + fileName()
            + QStringLiteral("\" is malformed; changes are not saved to it"));
        return false;
    }
    d->settings.sync();
    switch (d->settings.status()) {
    case QSettings::NoError:
        return true;
    case QSettings::AccessError:
        reportError(QStringLiteral("Property file \"") + fileName()
            + QStringLiteral("\" cannot be written"));
        return false;
    case QSettings::FormatError:
        reportError(
            QStringLiteral("Property file \"") + fileName() + QStringLiteral("\" is malformed"));
        return false;
    }
    return false;
}

QString IniPropertyBag::fileName() const
{
    return d->settings.fileName();
}

QVariant IniPropertyBag::rawRead(const QString &name) const
{
    if (d->malformed) {
        const auto held = d->unsaved.constFind(name);
        if (held != d->unsaved.cend())
            return *held;
    }
    const QVariant value = d->settings.value(d->key(name));
    // INI text with unquoted commas comes back as a list; it was one text to whoever wrote it.
    if (value.typeId() == QMetaType::QStringList) {
        const QString path = d->key(name);
        const qsizetype slash = path.indexOf(u'/');
        const QString section = slash < 0 ? QStringLiteral("General") : path.first(slash);
        QString inSection = slash < 0 ? path : path.sliced(slash + 1);
        inSection.replace(u'/', u'\\');
        if (const std::optional<QString> text = iniText(fileName(), section, inSection))
            return *text;
        return value.toStringList().join(u',');
    }
    return value;
}

void IniPropertyBag::rawWrite(const QString &name, const QVariant &value)
{
    if (d->malformed)
        d->unsaved.insert(name, value);
    else
        d->settings.setValue(d->key(name), value);
}

void IniPropertyBag::rawRemove(const QString &name)
{
    if (d->malformed)
        d->unsaved.insert(name, QVariant());
    else
        d->settings.remove(d->key(name));
}

} // namespace Vantry
