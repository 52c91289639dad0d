#include "control/textcodec.h"

#include <QHash>
#include <QStringDecoder>
#include <QStringEncoder>

#include <array>
#include <optional>

namespace Vantry::Control::TextCodec {

namespace {

const QByteArray utf8Name = QByteArrayLiteral("UTF-8");
const QByteArray utf16LEName = QByteArrayLiteral("UTF-16LE");
const QByteArray utf16BEName = QByteArrayLiteral("UTF-16BE");
const QByteArray windows1252Name = QByteArrayLiteral("windows-1252");
const QByteArray iso885915Name = QByteArrayLiteral("ISO-8859-15");

// How far into a document a META charset declaration is looked for.
constexpr qsizetype prescanLength = 4096;

struct Label
{
    const char *label;
    const QByteArray *encoding;
};

// The labels that browsers map differently from the platform's converters, or that the
// converters may not know.
const Label knownLabels[] = {
    {"unicode-1-1-utf-8", &utf8Name},
    {"unicode11utf8", &utf8Name},
    {"unicode20utf8", &utf8Name},
    {"utf-8", &utf8Name},
    {"utf8", &utf8Name},
    {"x-unicode20utf8", &utf8Name},
    {"ansi_x3.4-1968", &windows1252Name},
    {"ascii", &windows1252Name},
    {"cp1252", &windows1252Name},
    {"cp819", &windows1252Name},
    {"csisolatin1", &windows1252Name},
    {"ibm819", &windows1252Name},
    {"iso-8859-1", &windows1252Name},
    {"iso-ir-100", &windows1252Name},
    {"iso8859-1", &windows1252Name},
    {"iso88591", &windows1252Name},
    {"iso_8859-1", &windows1252Name},
    {"iso_8859-1:1987", &windows1252Name},
    {"l1", &windows1252Name},
    {"latin1", &windows1252Name},
    {"us-ascii", &windows1252Name},
    {"windows-1252", &windows1252Name},
    {"x-cp1252", &windows1252Name},
    {"csisolatin9", &iso885915Name},
    {"iso-8859-15", &iso885915Name},
    {"iso8859-15", &iso885915Name},
    {"iso885915", &iso885915Name},
    {"iso_8859-15", &iso885915Name},
    {"l9", &iso885915Name},
    {"csunicode", &utf16LEName},
    {"iso-10646-ucs-2", &utf16LEName},
    {"ucs-2", &utf16LEName},
    {"unicode", &utf16LEName},
    {"unicodefeff", &utf16LEName},
    {"utf-16", &utf16LEName},
    {"utf-16le", &utf16LEName},
    {"unicodefffe", &utf16BEName},
    {"utf-16be", &utf16BEName},
};

bool isUtf16(const QByteArray &name)
{
    return name == utf16LEName || name == utf16BEName;
}

// windows-1252 differs from ISO-8859-1 only in 0x80..0x9F; the five unassigned bytes
// map to the C1 controls, as browsers map them, so that every byte survives.
constexpr std::array<char16_t, 32> windows1252High
    = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// ISO-8859-15 replaces eight ISO-8859-1 characters.
constexpr std::array<std::pair<uchar, char16_t>, 8> iso885915Changes
    = {{{0xA4, 0x20AC}, {0xA6, 0x0160}, {0xA8, 0x0161}, {0xB4, 0x017D}, {0xB8, 0x017E},
        {0xBC, 0x0152}, {0xBD, 0x0153}, {0xBE, 0x0178}}};

using ByteTable = std::array<char16_t, 256>;

std::optional<ByteTable> tableFor(QByteArrayView name)
{
    ByteTable table{};
    for (int b = 0; b < 256; ++b)
        table[b] = char16_t(b);
    if (name.compare(windows1252Name, Qt::CaseInsensitive) == 0) {
        for (int i = 0; i < 32; ++i)
            table[0x80 + i] = windows1252High[i];
        return table;
    }
    if (name.compare(iso885915Name, Qt::CaseInsensitive) == 0) {
        for (const auto &[byte, unicode] : iso885915Changes)
            table[byte] = unicode;
        return table;
    }
    return std::nullopt;
}

std::optional<QStringConverter::Encoding> builtInEncoding(const QByteArray &name)
{
    if (name == utf8Name)
        return QStringConverter::Utf8;
    if (name == utf16LEName)
        return QStringConverter::Utf16LE;
    if (name == utf16BEName)
        return QStringConverter::Utf16BE;
    return std::nullopt;
}

// A byte-order mark inside the text is content, not a mark: it must survive. Texts are
// whole, so a sequence cut off at the end is an error rather than a wait for more.
constexpr QStringConverter::Flags keepMarks
    = QStringConverter::Flag::ConvertInitialBom | QStringConverter::Flag::Stateless;

QStringDecoder decoderFor(const QByteArray &name)
{
    if (const auto builtIn = builtInEncoding(name))
        return QStringDecoder(*builtIn, keepMarks);
    return QStringDecoder(name.constData(), keepMarks);
}

QStringEncoder encoderFor(const QByteArray &name)
{
    if (const auto builtIn = builtInEncoding(name))
        return QStringEncoder(*builtIn, keepMarks);
    return QStringEncoder(name.constData(), keepMarks);
}

QString decodeAs(QByteArrayView bytes, const QByteArray &name)
{
    QStringDecoder decoder = decoderFor(name);
    if (decoder.isValid())
        return decoder.decode(bytes);
    return decodeWithTable(bytes, name);
}

bool isValidUtf8(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringConverter::Utf8, keepMarks);
    const QString text = decoder.decode(bytes);
    return !decoder.hasError();
}

// The first bytes show UTF-16 without a byte-order mark: markup is mostly ASCII, so every
// other byte is zero, on the odd positions for little-endian text and the even ones for
// big-endian. Returns the encoding's name, or nothing.
QByteArray utf16ByPattern(QByteArrayView bytes)
{
    const qsizetype pairs = qMin<qsizetype>(bytes.size(), 1024) / 2;
    qsizetype little = 0;
    qsizetype big = 0;
    for (qsizetype i = 0; i < pairs; ++i) {
        const bool evenZero = bytes.at(2 * i) == 0;
        const bool oddZero = bytes.at(2 * i + 1) == 0;
        if (oddZero && !evenZero)
            ++little;
        else if (evenZero && !oddZero)
            ++big;
    }
    if (pairs == 0)
        return {};
    if (little * 2 > pairs && big * 10 <= little)
        return utf16LEName;
    if (big * 2 > pairs && little * 10 <= big)
        return utf16BEName;
    return {};
}

// How far into a file a zero byte marks it as binary rather than text.
constexpr qsizetype binaryScanLength = 8000;

// Text in which every character the test refuses is written as a numeric character
// reference. Only characters outside ASCII are tested, each distinct one once.
template <typename Encodable> QString withCharacterReferences(QStringView text, Encodable encodable)
{
    QHash<char32_t, bool> known;
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.unicode() < 0x80) {
            result.append(c);
            continue;
        }
        const bool pair
            = c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        const QStringView character = text.sliced(i, pair ? 2 : 1);
        const char32_t code = pair ? QChar::surrogateToUcs4(c, text.at(i + 1)) : c.unicode();
        auto found = known.constFind(code);
        if (found == known.constEnd())
            found = known.insert(code, encodable(character));
        if (*found)
            result.append(character);
        else
            result += QStringLiteral("&#%1;").arg(quint32(code));
        i += character.size() - 1;
    }
    return result;
}

QByteArray encodeWithTable(QStringView text, const ByteTable &table)
{
    QHash<char16_t, char> reverse;
    for (int b = 0; b < 256; ++b)
        reverse.insert(table[b], char(b));
    const QString written = withCharacterReferences(text, [&reverse](QStringView character) {
        return character.size() == 1 && reverse.contains(character.front().unicode());
    });
    QByteArray bytes;
    bytes.reserve(written.size());
    for (const QChar c : written)
        bytes.append(reverse.value(c.unicode()));
    return bytes;
}

// A tiny reader over the start of a document, enough to find META declarations the way
// browsers pre-scan for them.
class Prescanner
{
public:
    explicit Prescanner(QByteArrayView bytes)
        : m_bytes(bytes.first(qMin(bytes.size(), prescanLength)))
    { }

    QByteArray run()
    {
        while (m_pos < m_bytes.size()) {
            if (startsWith("<!--")) {
                const qsizetype end = m_bytes.indexOf("-->", m_pos + 4);
                if (end < 0)
                    return {};
                m_pos = end + 3;
            } else if (startsWithTag("<meta")) {
                m_pos += 5;
                if (QByteArray charset = metaCharset(); !charset.isEmpty())
                    return charset;
            } else if (startsWith("<") && m_pos + 1 < m_bytes.size()
                && (isLetter(at(m_pos + 1))
                    || (at(m_pos + 1) == '/' && m_pos + 2 < m_bytes.size()
                        && isLetter(at(m_pos + 2))))) {
                m_pos += at(m_pos + 1) == '/' ? 2 : 1;
                while (m_pos < m_bytes.size() && !isSpace(at(m_pos)) && at(m_pos) != '>')
                    ++m_pos;
                while (attribute().has_value()) { }
            } else if (startsWith("<!") || startsWith("</") || startsWith("<?")) {
                const qsizetype end = m_bytes.indexOf('>', m_pos);
                if (end < 0)
                    return {};
                m_pos = end + 1;
            } else {
                ++m_pos;
            }
        }
        return {};
    }

private:
    struct Attribute
    {
        QByteArray name;
        QByteArray value;
    };

    static bool isSpace(char c)
    {
        return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
    }
    static bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
    char at(qsizetype i) const { return m_bytes.at(i); }

    bool startsWith(const char *text) const
    {
        return m_bytes.sliced(m_pos).startsWith(QByteArrayView(text));
    }

    bool startsWithTag(const char *tag) const
    {
        const QByteArrayView name(tag);
        if (m_pos + name.size() >= m_bytes.size())
            return false;
        const char after = at(m_pos + name.size());
        return m_bytes.sliced(m_pos, name.size()).compare(name, Qt::CaseInsensitive) == 0
            && (isSpace(after) || after == '/');
    }

    // The next attribute of the current tag; nothing at the tag's end, which it consumes.
    std::optional<Attribute> attribute()
    {
        while (m_pos < m_bytes.size() && (isSpace(at(m_pos)) || at(m_pos) == '/'))
            ++m_pos;
        if (m_pos >= m_bytes.size())
            return std::nullopt;
        if (at(m_pos) == '>') {
            ++m_pos;
            return std::nullopt;
        }
        Attribute attr;
        while (m_pos < m_bytes.size() && !isSpace(at(m_pos)) && at(m_pos) != '=' && at(m_pos) != '>'
            && at(m_pos) != '/') {
            attr.name.append(char(QChar::toLower(uchar(at(m_pos)))));
            ++m_pos;
        }
        while (m_pos < m_bytes.size() && isSpace(at(m_pos)))
            ++m_pos;
        if (m_pos >= m_bytes.size() || at(m_pos) != '=')
            return attr;
        ++m_pos;
        while (m_pos < m_bytes.size() && isSpace(at(m_pos)))
            ++m_pos;
        if (m_pos >= m_bytes.size())
            return attr;
        if (const char quote = at(m_pos); quote == '"' || quote == '\'') {
            const qsizetype end = m_bytes.indexOf(quote, m_pos + 1);
            const qsizetype stop = end < 0 ? m_bytes.size() : end;
            attr.value = m_bytes.sliced(m_pos + 1, stop - m_pos - 1).toByteArray();
            m_pos = end < 0 ? m_bytes.size() : end + 1;
        } else {
            const qsizetype start = m_pos;
            while (m_pos < m_bytes.size() && !isSpace(at(m_pos)) && at(m_pos) != '>')
                ++m_pos;
            attr.value = m_bytes.sliced(start, m_pos - start).toByteArray();
        }
        return attr;
    }

    QByteArray metaCharset()
    {
        QByteArray charset;
        QByteArray content;
        bool contentType = false;
        while (const auto attr = attribute()) {
            if (attr->name == "charset" && charset.isEmpty())
                charset = attr->value.trimmed();
            else if (attr->name == "content" && content.isEmpty())
                content = attr->value;
            else if (attr->name == "http-equiv")
                contentType
                    = attr->value.trimmed().compare("content-type", Qt::CaseInsensitive) == 0;
        }
        if (!charset.isEmpty())
            return charset;
        if (contentType)
            return charsetFromContentType(content);
        return {};
    }

public:
    // The charset parameter of a Content-Type value.
    static QByteArray charsetFromContentType(QByteArrayView content)
    {
        const QByteArray lower = content.toByteArray().toLower();
        qsizetype at = lower.indexOf("charset");
        while (at >= 0) {
            qsizetype pos = at + 7;
            while (pos < lower.size() && isSpace(lower.at(pos)))
                ++pos;
            if (pos < lower.size() && lower.at(pos) == '=') {
                ++pos;
                while (pos < lower.size() && isSpace(lower.at(pos)))
                    ++pos;
                if (pos >= lower.size())
                    return {};
                const char quote = lower.at(pos);
                if (quote == '"' || quote == '\'') {
                    const qsizetype end = lower.indexOf(quote, pos + 1);
                    return end < 0 ? QByteArray()
                                   : content.sliced(pos + 1, end - pos - 1).toByteArray();
                }
                qsizetype end = pos;
                while (end < lower.size() && !isSpace(lower.at(end)) && lower.at(end) != ';')
                    ++end;
                return content.sliced(pos, end - pos).toByteArray();
            }
            at = lower.indexOf("charset", pos);
        }
        return {};
    }

private:
    QByteArrayView m_bytes;
    qsizetype m_pos = 0;
};

} // namespace

QByteArray encodingForLabel(QByteArrayView label)
{
    QByteArray key = label.trimmed().toByteArray();
    // Content-Type values arrive with the rest of the header now and then.
    if (key.contains('='))
        key = Prescanner::charsetFromContentType(key);
    key = key.toLower();
    if (key.isEmpty())
        return {};
    for (const Label &known : knownLabels) {
        if (key == known.label)
            return *known.encoding;
    }
    const QStringDecoder decoder(key.constData());
    if (!decoder.isValid())
        return {};
    const QByteArray name(decoder.name());
    // Browsers refuse UTF-7: it hides markup in plain letters.
    if (name.compare("UTF-7", Qt::CaseInsensitive) == 0)
        return {};
    return name;
}

QByteArray declaredCharset(QByteArrayView bytes)
{
    return Prescanner(bytes).run();
}

Decoded decode(QByteArrayView bytes, QByteArrayView transportCharset)
{
    Decoded result;
    Encoding &encoding = result.encoding;
    qsizetype skip = 0;
    if (bytes.startsWith("\xEF\xBB\xBF")) {
        encoding = {utf8Name, true};
        skip = 3;
    } else if (bytes.startsWith("\xFF\xFE")) {
        encoding = {utf16LEName, true};
        skip = 2;
    } else if (bytes.startsWith("\xFE\xFF")) {
        encoding = {utf16BEName, true};
        skip = 2;
    } else if (QByteArray name = encodingForLabel(transportCharset); !name.isEmpty()) {
        encoding = {name, false};
    } else if (QByteArray declared = encodingForLabel(declaredCharset(bytes));
               !declared.isEmpty()) {
        // A declaration readable as ASCII cannot be in UTF-16; browsers take UTF-8.
        encoding = {isUtf16(declared) ? utf8Name : declared, false};
    } else if (QByteArray utf16 = utf16ByPattern(bytes); !utf16.isEmpty()) {
        encoding = {utf16, false};
    } else {
        encoding = {isValidUtf8(bytes) ? utf8Name : windows1252Name, false};
    }
    // Text has no zero bytes outside UTF-16; an image or an archive has them near its start.
    result.binary = !isUtf16(encoding.name)
        && bytes.first(qMin(bytes.size(), binaryScanLength)).contains('\0');
    result.text = decodeAs(bytes.sliced(skip), encoding.name);
    return result;
}

Encoding encodingForSave(const QString &text, const Encoding &opened)
{
    // UTF-16 is only recognised by its byte-order mark once the text may start with
    // anything (a body without markup in front); a file written without one would reopen
    // as garbage.
    if (isUtf16(opened.name))
        return {opened.name, true};
    if (opened.byteOrderMark)
        return opened;
    const QByteArray head = QStringView(text).first(qMin(text.size(), prescanLength)).toLatin1();
    const QByteArray declared = encodingForLabel(declaredCharset(head));
    if (declared.isEmpty())
        return opened;
    if (isUtf16(declared))
        return Encoding{utf8Name, false};
    return {declared, false};
}

Encoded encode(const QString &text, const Encoding &encoding)
{
    Encoded result;
    if (QStringEncoder encoder = encoderFor(encoding.name); encoder.isValid()) {
        result.bytes = encoder.encode(text);
        if (encoder.hasError()) {
            const QString written
                = withCharacterReferences(text, [&encoding](QStringView character) {
                      QStringEncoder single = encoderFor(encoding.name);
                      // The converters are lazy: only a materialised result is encoded.
                      const QByteArray bytes = single.encode(character);
                      return !single.hasError();
                  });
            QStringEncoder again = encoderFor(encoding.name);
            result.bytes = again.encode(written);
            if (again.hasError()) {
                result.bytes.clear();
                result.error = QStringLiteral("The document cannot be written in its %1 encoding.")
                                   .arg(QString::fromLatin1(encoding.name));
                return result;
            }
        }
    } else if (const auto table = tableFor(encoding.name)) {
        result.bytes = encodeWithTable(text, *table);
    } else {
        result.error = QStringLiteral("The %1 encoding of this document is not available.")
                           .arg(QString::fromLatin1(encoding.name));
        return result;
    }
    if (encoding.byteOrderMark) {
        if (encoding.name == utf8Name)
            result.bytes.prepend("\xEF\xBB\xBF");
        else if (encoding.name == utf16LEName)
            result.bytes.prepend("\xFF\xFE");
        else if (encoding.name == utf16BEName)
            result.bytes.prepend("\xFE\xFF");
    }
    return result;
}

QString decodeWithTable(QByteArrayView bytes, QByteArrayView encodingName)
{
    const auto table = tableFor(encodingName);
    if (!table)
        return {};
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    for (const char byte : bytes)
        *out++ = QChar((*table)[uchar(byte)]);
    return text;
}

} // namespace Vantry::Control::TextCodec
