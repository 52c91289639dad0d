// Encodings of HTML files: how they are recognised, that binary files are told apart,
// that unchanged text goes back to the same bytes, and that a character an encoding lacks
// is written as a character reference.

#include "../common/datarows.h"

#include "control/textcodec.h"

#include <QStringDecoder>
#include <QTest>

using namespace Vantry::Control;
using namespace Qt::StringLiterals;
using TextCodec::Encoding;

class tst_TextCodec : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodeRecognisesTheEncoding_data()
    {
        columns<QByteArray, QByteArray, QByteArray, bool, QString>(
            "bytes", "transport", "encoding", "bom", "text");

        const QString cafe = u"caf\u00E9"_s;
        row("UTF-8 BOM",
            QByteArray("\xEF\xBB\xBF"
                       "caf\xC3\xA9"),
            QByteArray(), QByteArray("UTF-8"), true, cafe);
        row("UTF-16 LE BOM",
            QByteArray("\xFF\xFE"
                       "c\0a\0f\0\xE9\0",
                10),
            QByteArray(), QByteArray("UTF-16LE"), true, cafe);
        row("UTF-16 BE BOM", QByteArray("\xFE\xFF\0c\0a\0f\0\xE9", 10), QByteArray(),
            QByteArray("UTF-16BE"), true, cafe);
        row("UTF-16 LE without BOM", QByteArray("<\0p\0>\0", 6), QByteArray(),
            QByteArray("UTF-16LE"), false, "<p>");
        row("UTF-16 BE without BOM, starting with text", QByteArray("\0H\0i\0 \0<\0b\0>", 12),
            QByteArray(), QByteArray("UTF-16BE"), false, "Hi <b>");
        row("UTF-16 LE without BOM, starting with a line break",
            QByteArray("\n\0<\0p\0>\0\xA9\x03", 10), QByteArray(), QByteArray("UTF-16LE"), false,
            "\n<p>\u03A9");
        row("BOM wins over the transport",
            QByteArray("\xEF\xBB\xBF"
                       "caf\xC3\xA9"),
            QByteArray("windows-1252"), QByteArray("UTF-8"), true, cafe);
        row("transport wins over META", QByteArray("<meta charset=utf-8>caf\xE9"),
            QByteArray("text/html; charset=latin1"), QByteArray("windows-1252"), false,
            u"<meta charset=utf-8>"_s + cafe);
        row("META charset, unquoted", QByteArray("<meta charset=windows-1252>caf\xE9"),
            QByteArray(), QByteArray("windows-1252"), false,
            u"<meta charset=windows-1252>"_s + cafe);
        row("META http-equiv, single quotes, any case",
            QByteArray("<META HTTP-EQUIV='content-type' CONTENT='text/html; Charset=ISO-8859-15'>"
                       "\xA4"),
            QByteArray(), QByteArray("ISO-8859-15"), false,
            "<META HTTP-EQUIV='content-type' CONTENT='text/html; "
            "Charset=ISO-8859-15'>\u20AC");
        row("META after a title and a comment",
            QByteArray("<html><head><title>a > b</title><!-- <meta charset=utf-16le> -->"
                       "<meta name=x content=\"a>b\"><meta charset=\"iso-8859-1\"></head>\x80"),
            QByteArray(), QByteArray("windows-1252"), false,
            "<html><head><title>a > b</title><!-- <meta charset=utf-16le> -->"
            "<meta name=x content=\"a>b\"><meta charset=\"iso-8859-1\"></head>\u20AC");
        row("META in a comment only", QByteArray("<!-- <meta charset=koi8-r> -->\xC3\xA9"),
            QByteArray(), QByteArray("UTF-8"), false, "<!-- <meta charset=koi8-r> -->\u00E9");
        row("META naming UTF-16 means UTF-8", QByteArray("<meta charset=utf-16>\xC3\xA9"),
            QByteArray(), QByteArray("UTF-8"), false, "<meta charset=utf-16>\u00E9");
        row("unknown label is ignored", QByteArray("<meta charset=no-such-thing>\xE9"),
            QByteArray(), QByteArray("windows-1252"), false, "<meta charset=no-such-thing>\u00E9");
        row("no declaration, valid UTF-8", QByteArray("caf\xC3\xA9"), QByteArray(),
            QByteArray("UTF-8"), false, cafe);
        row("no declaration, not UTF-8", QByteArray("caf\xE9"), QByteArray(),
            QByteArray("windows-1252"), false, cafe);
        row("a second BOM is text", QByteArray("\xEF\xBB\xBF\xEF\xBB\xBFx"), QByteArray(),
            QByteArray("UTF-8"), true, "\uFEFFx");
        row("ICU charset", QByteArray("<meta charset=iso-8859-2>\xB1"), QByteArray(),
            QByteArray("ISO-8859-2"), false, "<meta charset=iso-8859-2>\u0105");
    }

    void decodeRecognisesTheEncoding()
    {
        auto [bytes, transport, encoding, bom, text]
            = fetch<QByteArray, QByteArray, QByteArray, bool, QString>(
                "bytes", "transport", "encoding", "bom", "text");

        const TextCodec::Decoded decoded = TextCodec::decode(bytes, transport);
        QCOMPARE(decoded.encoding.name, encoding);
        QCOMPARE(decoded.encoding.byteOrderMark, bom);
        QCOMPARE(decoded.text, text);

        // Unchanged text goes back to the very same bytes; UTF-16 gains its byte-order mark.
        const TextCodec::Encoded encoded = TextCodec::encode(
            decoded.text, TextCodec::encodingForSave(decoded.text, decoded.encoding));
        QCOMPARE(encoded.error, QString());
        QByteArray expected = bytes;
        if (!bom && encoding == "UTF-16LE")
            expected.prepend("\xFF\xFE");
        else if (!bom && encoding == "UTF-16BE")
            expected.prepend("\xFE\xFF");
        if (transport.isEmpty())
            QCOMPARE(encoded.bytes, expected);
    }

    void labelsResolveAsBrowsersResolveThem_data()
    {
        columns<QByteArray, QByteArray>("label", "encoding");
        row("utf8", QByteArray(" UTF8 "), QByteArray("UTF-8"));
        row("latin1", QByteArray("Latin1"), QByteArray("windows-1252"));
        row("iso-8859-1", QByteArray("ISO-8859-1"), QByteArray("windows-1252"));
        row("l9", QByteArray("l9"), QByteArray("ISO-8859-15"));
        row("utf-16", QByteArray("utf-16"), QByteArray("UTF-16LE"));
        row("content type", QByteArray("text/html; charset=\"utf-8\""), QByteArray("UTF-8"));
        row("unknown", QByteArray("x-nothing"), QByteArray());
        row("UTF-7 is refused", QByteArray("utf-7"), QByteArray());
        row("empty", QByteArray(), QByteArray());
    }

    void labelsResolveAsBrowsersResolveThem()
    {
        auto [label, encoding] = fetch<QByteArray, QByteArray>("label", "encoding");
        QCOMPARE(TextCodec::encodingForLabel(label), encoding);
    }

    void saveFollowsTheDeclaredCharset_data()
    {
        columns<QString, QByteArray, bool, QByteArray, bool>(
            "text", "opened", "openedBom", "saved", "savedBom");

        row("declaration changed to UTF-8", "<meta charset=\"utf-8\"><p>x</p>",
            QByteArray("windows-1252"), false, QByteArray("UTF-8"), false);
        row("a BOM outranks the declaration", "<meta charset=\"windows-1252\"><p>x</p>",
            QByteArray("UTF-16LE"), true, QByteArray("UTF-16LE"), true);
        row("UTF-16 gains a BOM", "\n<p>x</p>", QByteArray("UTF-16LE"), false,
            QByteArray("UTF-16LE"), true);
        row("no declaration in the body keeps the file's", "<p>x</p>", QByteArray("windows-1252"),
            false, QByteArray("windows-1252"), false);
    }

    void saveFollowsTheDeclaredCharset()
    {
        auto [text, opened, openedBom, saved, savedBom]
            = fetch<QString, QByteArray, bool, QByteArray, bool>(
                "text", "opened", "openedBom", "saved", "savedBom");
        const Encoding result = TextCodec::encodingForSave(text, Encoding{opened, openedBom});
        QCOMPARE(result.name, saved);
        QCOMPARE(result.byteOrderMark, savedBom);
    }

    void unencodableCharacterBecomesAReference_data()
    {
        columns<QString, QByteArray, QByteArray>("text", "encoding", "bytes");

        row("Greek in windows-1252", "<p>caf\u00E9 \u03A9\u03A9</p>", QByteArray("windows-1252"),
            QByteArray("<p>caf\xE9 &#937;&#937;</p>"));
        row("emoji in ISO-8859-15, table or platform", "\u20AC \U0001F600",
            QByteArray("ISO-8859-15"), QByteArray("\xA4 &#128512;"));
        row("Cyrillic in ISO-8859-2", "\u0105\u0416", QByteArray("ISO-8859-2"),
            QByteArray("\xB1&#1046;"));
    }

    void unencodableCharacterBecomesAReference()
    {
        auto [text, encoding, bytes]
            = fetch<QString, QByteArray, QByteArray>("text", "encoding", "bytes");
        const TextCodec::Encoded encoded = TextCodec::encode(text, Encoding{encoding, false});
        QCOMPARE(encoded.error, QString());
        QCOMPARE(encoded.bytes, bytes);
    }

    void binaryFilesAreNotText_data()
    {
        columns<QByteArray, bool>("bytes", "binary");

        row("PNG", QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x10", 20), true);
        row("JPEG", QByteArray("\xFF\xD8\xFF\xE0\0\x10JFIF\0", 11), true);
        row("zero byte after a text start",
            QByteArray("<html>").repeated(100) + QByteArray("\0\x01\x02", 3), true);
        row("UTF-16 without BOM", QByteArray("<\0p\0>\0", 6), false);
        row("UTF-16 with BOM", QByteArray("\xFE\xFF\0<\0p", 6), false);
        row("windows-1252", QByteArray("<p>caf\xE9</p>"), false);
    }

    void binaryFilesAreNotText()
    {
        auto [bytes, binary] = fetch<QByteArray, bool>("bytes", "binary");
        QCOMPARE(TextCodec::decode(bytes).binary, binary);
    }

    void builtInTablesMatchThePlatform_data()
    {
        QTest::addColumn<QByteArray>("encoding");
        row("windows-1252", QByteArray("windows-1252"));
        row("ISO-8859-15", QByteArray("ISO-8859-15"));
    }

    void builtInTablesMatchThePlatform()
    {
        QFETCH(QByteArray, encoding);
        QStringDecoder platform(encoding.constData());
        if (!platform.isValid())
            QSKIP("This Qt has no converter of its own to compare with");
        QByteArray every;
        for (int b = 0; b < 256; ++b)
            every.append(char(b));
        const QString expected = platform.decode(every);
        QCOMPARE(TextCodec::decodeWithTable(every, encoding), expected);
    }
};

QTEST_MAIN(tst_TextCodec)
#include "tst_textcodec.moc"
