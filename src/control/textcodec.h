#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

// How an HTML file's bytes become text and back, so that a document keeps its encoding
// from open to save. None of it needs a document or an engine.
namespace Vantry::Control::TextCodec {

struct Encoding
{
    // "UTF-8", "UTF-16LE", "UTF-16BE", "windows-1252", "ISO-8859-15", or another name the
    // platform's converters know.
    QByteArray name = QByteArrayLiteral("UTF-8");
    bool byteOrderMark = false;

    friend bool operator==(const Encoding &, const Encoding &) = default;
};

struct Decoded
{
    QString text;
    Encoding encoding;
    // Zero bytes near the start outside UTF-16: an image or other binary file, not text.
    bool binary = false;
};

struct Encoded
{
    QByteArray bytes;
    // Empty on success; otherwise why the text cannot be written at all.
    QString error;
};

// The encoding a charset label names, resolved the way browsers resolve it (so
// "iso-8859-1" and "us-ascii" mean windows-1252); empty when the label is unknown.
QByteArray encodingForLabel(QByteArrayView label);

// The charset label declared by a META tag (charset, or http-equiv Content-Type) near the
// start of a document; empty when there is none. Comments and other tags are skipped.
QByteArray declaredCharset(QByteArrayView bytes);

// Decodes a document. The encoding is taken from, in order: a byte-order mark, the
// transport's charset (an HTTP Content-Type), a META declaration, the byte pattern of
// UTF-16 without a mark (every other byte zero); otherwise UTF-8 when the bytes are valid
// UTF-8, else windows-1252. The byte-order mark is not part of the text.
[[nodiscard]] Decoded decode(QByteArrayView bytes, QByteArrayView transportCharset = {});

// The encoding to save text in that was read in opened: UTF-16 always with a byte-order
// mark; the same when the file began with one; otherwise what the text now declares in a
// META tag, since the user may have changed it; otherwise the same.
Encoding encodingForSave(const QString &text, const Encoding &opened);

// Encodes text, writing the byte-order mark when the encoding has one. A character the
// encoding cannot represent is written as a numeric character reference (&#937;), which
// reads back as the same character.
[[nodiscard]] Encoded encode(const QString &text, const Encoding &encoding);

// The built-in tables for windows-1252 and ISO-8859-15, used when the platform's
// converters lack them; an empty result for other names.
QString decodeWithTable(QByteArrayView bytes, QByteArrayView encodingName);

} // namespace Vantry::Control::TextCodec
