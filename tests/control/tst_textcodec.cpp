// Encodings of HTML files: how they are recognised, that binary files are told apart,
// that unchanged text goes back to the same bytes, and that a character an encoding lacks
// is written as a character reference.

#include "control/textcodec.h"

#include <QStringDecoder>
#include <QTest>

using namespace Vantry::Control;
using TextCodec::Encoding;

class tst_TextCodec : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void decodeRecognisesTheEncoding_data();
    void decodeRecognisesTheEncoding();
    void labelsResolveAsBrowsersResolveThem_data();
    void labelsResolveAsBrowsersResolveThem();
    void saveFollowsTheDeclaredCharset_data();
    void saveFollowsTheDeclaredCharset();
    void unencodableCharacterBecomesAReference_data();
    void unencodableCharacterBecomesAReference();
    void binaryFilesAreNotText_data();
    void binaryFilesAreNotText();
    void builtInTablesMatchThePlatform_data();
    void builtInTablesMatchThePlatform();
};

void tst_TextCodec::decodeRecognisesTheEncoding_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("transport");
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<bool>("bom");
    QTest::addColumn<QString>("text");

    const QString cafe = QStringLiteral("caf\u00E9");
    QTest::newRow("UTF-8 BOM") << QByteArray("\xEF\xBB\xBF"
                                             "caf\xC3\xA9")
                               << QByteArray() << QByteArray("UTF-8") << true << cafe;
    QTest::newRow("UTF-16 LE BOM") << QByteArray("\xFF\xFE"
                                                 "c\0a\0f\0\xE9\0",
        10) << QByteArray() << QByteArray("UTF-16LE")
                                   << true << cafe;
    QTest::newRow("UTF-16 BE BOM") << QByteArray("\xFE\xFF\0c\0a\0f\0\xE9", 10) << QByteArray()
                                   << QByteArray("UTF-16BE") << true << cafe;
    QTest::newRow("UTF-16 LE without BOM")
        << QByteArray("<\0p\0>\0", 6) << QByteArray() << QByteArray("UTF-16LE") << false
        << QStringLiteral("<p>");
    QTest::newRow("UTF-16 BE without BOM, starting with text") << QByteArray("\0H\0i\0 \0<\0b\0>",
        12) << QByteArray() << QByteArray("UTF-16BE") << false << QStringLiteral("Hi <b>");
    QTest::newRow("UTF-16 LE without BOM, starting with a line break")
        << QByteArray("\n\0<\0p\0>\0\xA9\x03", 10) << QByteArray() << QByteArray("UTF-16LE")
        << false << QStringLiteral("\n<p>\u03A9");
    QTest::newRow("BOM wins over the transport")
        << QByteArray("\xEF\xBB\xBF"
                      "caf\xC3\xA9")
        << QByteArray("windows-1252") << QByteArray("UTF-8") << true << cafe;
    QTest::newRow("transport wins over META")
        << QByteArray("<meta charset=utf-8>caf\xE9") << QByteArray("text/html; charset=latin1")
        << QByteArray("windows-1252") << false << QStringLiteral("<meta charset=utf-8>") + cafe;
    QTest::newRow("META charset, unquoted") << QByteArray("<meta charset=windows-1252>caf\xE9")
                                            << QByteArray() << QByteArray("windows-1252") << false
                                            << QStringLiteral("<meta charset=windows-1252>") + cafe;
    QTest::newRow("META http-equiv, single quotes, any case")
        << QByteArray("<META HTTP-EQUIV='content-type' CONTENT='text/html; Charset=ISO-8859-15'>"
                      "\xA4")
        << QByteArray() << QByteArray("ISO-8859-15") << false
        << QStringLiteral("<META HTTP-EQUIV='content-type' CONTENT='text/html; "
                          "Charset=ISO-8859-15'>\u20AC");
    QTest::newRow("META after a title and a comment")
        << QByteArray("<html><head><title>a > b</title><!-- <meta charset=utf-16le> -->"
                      "<meta name=x content=\"a>b\"><meta charset=\"iso-8859-1\"></head>\x80")
        << QByteArray() << QByteArray("windows-1252") << false
        << QStringLiteral(
               "<html><head><title>a > b</title><!-- <meta charset=utf-16le> -->"
               "<meta name=x content=\"a>b\"><meta charset=\"iso-8859-1\"></head>\u20AC");
    QTest::newRow("META in a comment only")
        << QByteArray("<!-- <meta charset=koi8-r> -->\xC3\xA9") << QByteArray()
        << QByteArray("UTF-8") << false << QStringLiteral("<!-- <meta charset=koi8-r> -->\u00E9");
    QTest::newRow("META naming UTF-16 means UTF-8")
        << QByteArray("<meta charset=utf-16>\xC3\xA9") << QByteArray() << QByteArray("UTF-8")
        << false << QStringLiteral("<meta charset=utf-16>\u00E9");
    QTest::newRow("unknown label is ignored")
        << QByteArray("<meta charset=no-such-thing>\xE9") << QByteArray()
        << QByteArray("windows-1252") << false
        << QStringLiteral("<meta charset=no-such-thing>\u00E9");
    QTest::newRow("no declaration, valid UTF-8")
        << QByteArray("caf\xC3\xA9") << QByteArray() << QByteArray("UTF-8") << false << cafe;
    QTest::newRow("no declaration, not UTF-8")
        << QByteArray("caf\xE9") << QByteArray() << QByteArray("windows-1252") << false << cafe;
    QTest::newRow("a second BOM is text")
        << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBFx") << QByteArray() << QByteArray("UTF-8") << true
        << QStringLiteral("\uFEFFx");
    QTest::newRow("ICU charset") << QByteArray("<meta charset=iso-8859-2>\xB1") << QByteArray()
                                 << QByteArray("ISO-8859-2") << false
                                 << QStringLiteral("<meta charset=iso-8859-2>\u0105");
}

void tst_TextCodec::decodeRecognisesTheEncoding()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, transport);
    QFETCH(QByteArray, encoding);
    QFETCH(bool, bom);
    QFETCH(QString, text);

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

void tst_TextCodec::labelsResolveAsBrowsersResolveThem_data()
{
    QTest::addColumn<QByteArray>("label");
    QTest::addColumn<QByteArray>("encoding");
    QTest::newRow("utf8") << QByteArray(" UTF8 ") << QByteArray("UTF-8");
    QTest::newRow("latin1") << QByteArray("Latin1") << QByteArray("windows-1252");
    QTest::newRow("us-ascii") << QByteArray("us-ascii") << QByteArray("windows-1252");
    QTest::newRow("iso-8859-1") << QByteArray("ISO-8859-1") << QByteArray("windows-1252");
    QTest::newRow("l9") << QByteArray("l9") << QByteArray("ISO-8859-15");
    QTest::newRow("utf-16") << QByteArray("utf-16") << QByteArray("UTF-16LE");
    QTest::newRow("content type") << QByteArray("text/html; charset=\"utf-8\"")
                                  << QByteArray("UTF-8");
    QTest::newRow("unknown") << QByteArray("x-nothing") << QByteArray();
    QTest::newRow("UTF-7 is refused") << QByteArray("utf-7") << QByteArray();
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void tst_TextCodec::labelsResolveAsBrowsersResolveThem()
{
    QFETCH(QByteArray, label);
    QFETCH(QByteArray, encoding);
    QCOMPARE(TextCodec::encodingForLabel(label), encoding);
}

void tst_TextCodec::saveFollowsTheDeclaredCharset_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("opened");
    QTest::addColumn<bool>("openedBom");
    QTest::addColumn<QByteArray>("saved");
    QTest::addColumn<bool>("savedBom");

    QTest::newRow("declaration changed to UTF-8")
        << "<meta charset=\"utf-8\"><p>x</p>" << QByteArray("windows-1252") << false
        << QByteArray("UTF-8") << false;
    QTest::newRow("a BOM outranks the declaration")
        << "<meta charset=\"windows-1252\"><p>x</p>" << QByteArray("UTF-16LE") << true
        << QByteArray("UTF-16LE") << true;
    QTest::newRow("UTF-16 gains a BOM")
        << "\n<p>x</p>" << QByteArray("UTF-16LE") << false << QByteArray("UTF-16LE") << true;
    QTest::newRow("no declaration in the body keeps the file's")
        << "<p>x</p>" << QByteArray("windows-1252") << false << QByteArray("windows-1252") << false;
}

void tst_TextCodec::saveFollowsTheDeclaredCharset()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, opened);
    QFETCH(bool, openedBom);
    QFETCH(QByteArray, saved);
    QFETCH(bool, savedBom);
    const Encoding result = TextCodec::encodingForSave(text, Encoding{opened, openedBom});
    QCOMPARE(result.name, saved);
    QCOMPARE(result.byteOrderMark, savedBom);
}

void tst_TextCodec::unencodableCharacterBecomesAReference_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("Greek in windows-1252")
        << QStringLiteral("<p>caf\u00E9 \u03A9\u03A9</p>") << QByteArray("windows-1252")
        << QByteArray("<p>caf\xE9 &#937;&#937;</p>");
    QTest::newRow("emoji in ISO-8859-15, table or platform") << QStringLiteral(
        "\u20AC \U0001F600") << QByteArray("ISO-8859-15") << QByteArray("\xA4 &#128512;");
    QTest::newRow("Cyrillic in ISO-8859-2")
        << QStringLiteral("\u0105\u0416") << QByteArray("ISO-8859-2") << QByteArray("\xB1&#1046;");
}

void tst_TextCodec::unencodableCharacterBecomesAReference()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, encoding);
    QFETCH(QByteArray, bytes);
    const TextCodec::Encoded encoded = TextCodec::encode(text, Encoding{encoding, false});
    QCOMPARE(encoded.error, QString());
    QCOMPARE(encoded.bytes, bytes);
}

void tst_TextCodec::binaryFilesAreNotText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("binary");

    QTest::newRow("PNG") << QByteArray("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\x10", 20) << true;
    QTest::newRow("JPEG") << QByteArray("\xFF\xD8\xFF\xE0\0\x10JFIF\0", 11) << true;
    QTest::newRow("zero byte after a text start")
        << QByteArray("<html>").repeated(100) + QByteArray("\0\x01\x02", 3) << true;
    QTest::newRow("UTF-16 without BOM") << QByteArray("<\0p\0>\0", 6) << false;
    QTest::newRow("UTF-16 with BOM") << QByteArray("\xFE\xFF\0<\0p", 6) << false;
    QTest::newRow("windows-1252") << QByteArray("<p>caf\xE9</p>") << false;
}

void tst_TextCodec::binaryFilesAreNotText()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, binary);
    QCOMPARE(TextCodec::decode(bytes).binary, binary);
}

void tst_TextCodec::builtInTablesMatchThePlatform_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::newRow("windows-1252") << QByteArray("windows-1252");
    QTest::newRow("ISO-8859-15") << QByteArray("ISO-8859-15");
}

void tst_TextCodec::builtInTablesMatchThePlatform()
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

QTEST_MAIN(tst_TextCodec)
#include "tst_textcodec.moc"
