// Feeds the rules that take host or file text arbitrary input: content rules, text codecs,
// source text, the markup builders and the host's link lists. Run under ASan and UBSan, any
// memory error, undefined behaviour or broken invariant aborts.
//
// LLVMFuzzerTestOneInput is libFuzzer's entry point; built with VANTRY_FUZZ_DRIVER, a main
// of its own feeds it reproducible random input instead (and replays files named on the
// command line), so the target runs with any compiler.

#include "commands/commandtables.h"
#include "commands/insertionrules.h"
#include "control/contentrules.h"
#include "control/settings.h"
#include "control/textcodec.h"
#include "dialogs/linklists.h"
#include "platform/scintilla/sourcetext.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

using namespace Vantry;
namespace ContentRules = Control::ContentRules;
namespace TextCodec = Control::TextCodec;
namespace SourceText = Platform::SourceText;

// The input being tried, shown when an invariant breaks.
QByteArray currentInput;

void check(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "broken invariant: %s\ninput (hex): %s\n", what,
            currentInput.toHex().constData());
        std::abort();
    }
}

void fuzzCodec(const QByteArray &bytes, const QByteArray &label)
{
    TextCodec::encodingForLabel(label);
    TextCodec::declaredCharset(bytes);
    TextCodec::decodeWithTable(bytes, "windows-1252");
    TextCodec::decodeWithTable(bytes, "ISO-8859-15");
    const TextCodec::Decoded decoded = TextCodec::decode(bytes, label);
    const TextCodec::Encoding target = TextCodec::encodingForSave(decoded.text, decoded.encoding);
    const TextCodec::Encoded saved = TextCodec::encode(decoded.text, target);
    check(saved.error.isEmpty(), "text encodes in the encoding it is saved in");

    // A document saved in the encoding it was read in reads back as the same text.
    if (target.name == decoded.encoding.name)
        check(TextCodec::decode(saved.bytes, label).text == decoded.text,
            "text written in its own encoding reads back the same");
}

void fuzzContent(const QString &text, const QString &find, const QString &other)
{
    check(ContentRules::ReplaceNoCase(text, find, find).compare(text, Qt::CaseInsensitive) == 0,
        "replacing a text by itself changes at most letter case");
    ContentRules::ReplaceNoCase(text, find, other);
    ContentRules::removeLineBreaks(text);
    ContentRules::wrapInDefaultFont(text, find, other, find);
    const QString based = ContentRules::insertBase(text, other);
    ContentRules::removeBase(based, other);
    ContentRules::removeBase(text, other);
    ContentRules::normaliseStyleSheetLinks(text, other);
    ContentRules::removeRootPath(text, find);
    Commands::indexOfNoCase(text, find.isEmpty() ? QStringLiteral("<") : find, 0);
}

void fuzzSourceAndCommands(const QString &text, const QString &find, const QString &other)
{
    for (const QString &line : text.split(QLatin1Char('\n'))) {
        check(SourceText::uncommentLine(SourceText::commentLine(line)) == line,
            "uncommenting undoes commenting");
        SourceText::typesTagName(line);
    }
    SourceText::parseMemberList(text);

    Commands::CheckBoolean(text);
    Commands::toolbarKeyCommand(text);
    Control::findProperty(text);
    Commands::insertionMarkup(text.size() % 13, other);

    Commands::TableArguments table;
    table.rows = find;
    table.columns = other;
    table.width = text;
    table.style = text;
    QVariantMap named{{text, find}, {QStringLiteral("Rows"), other}};
    QString error;
    Commands::tableArgumentsFromMap(named, true, &error);
    // Only small tables: the markup of the largest one takes a while to build.
    if (Commands::tableArgumentsProblem(table).isEmpty() && find.toInt() * other.toInt() <= 64)
        Commands::tableMarkup(table);
    Commands::ImageArguments image;
    image.src = text;
    image.alt = find;
    Commands::imageMarkup(image);
}

void fuzzLinkLists(const QString &text, const QString &find)
{
    using namespace Dialogs;
    for (const LinkListKind kind :
        {LinkListKind::Sites, LinkListKind::Pages, LinkListKind::PortalPages}) {
        const LinkListLoad load = loadLinkList(kind, text, find, find.toInt());
        if (!load.list) {
            check(!load.error.message(kind).isEmpty(), "a list that fails to load says why");
            continue;
        }
        const LinkList &list = *load.list;
        check(list.names.size() == list.ids.size() && list.ids.size() == list.addresses.size()
                && list.current >= 0 && list.current < list.names.size(),
            "a loaded list is whole and selects one of its entries");
    }
    check(!linkTargets(text).isEmpty(), "there is always a target to choose");
    LinkPropertiesValues values;
    readLinkReference(text, values);
    LinkPropertiesValues again;
    readLinkReference(linkReference(values), again);
    check(linkReference(again) == linkReference(values), "a link reference reads back the same");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    currentInput = bytes;
    // Three texts from one input: the whole, and the first two pieces between zero bytes.
    const QList<QByteArray> pieces = bytes.split('\0');
    const QString text = QString::fromUtf8(bytes);
    const QString find = QString::fromUtf8(pieces.value(0).left(24));
    const QString other = QString::fromUtf8(pieces.value(1).left(24));

    fuzzCodec(bytes, pieces.value(1).left(24));
    fuzzContent(text, find, other);
    fuzzSourceAndCommands(text, find, other);
    fuzzLinkLists(text, find);
    return 0;
}

#ifdef VANTRY_FUZZ_DRIVER

#include <QElapsedTimer>
#include <QFile>

#include <random>

namespace {

// Pieces of the markup and encodings the rules look for, so that random input reaches
// their branches and not only their early exits.
const char *const tokens[] = {"<HTML>", "<html>", "<BASE HREF=\"x\">", "<base", "</HEAD>",
    "</head>", "<LINK rel=\"stylesheet\" href=\"a.css\">", "<link rel=STYLESHEET>", "\r\n", "\n",
    "<meta charset=\"utf-16\">",
    "<META http-equiv=\"Content-Type\" "
    "content=\"text/html; charset=iso-8859-15\">",
    "charset=", "<!--", "-->", "<!-->", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF", "\xC3\xA9",
    "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\x80", "\xA4", "\0", "C:\\\\site\\", "C:\\site\\", "true",
    "TRUE", "1", "0", "1000", "100", "-1", "99999999999", "</", "<d", "utf-8", "windows-1252",
    "x-user-defined", "\xED\xA0\x80", "<P PortalPageID=\"", "<Site ArticleSiteID=\"",
    "\" ArticleSectionID=\"", "\" PageURL=\"", "<Pages>", "</Pages>", "/>", "cms:3:", "portal:"};

QByteArray randomInput(std::mt19937 &random)
{
    QByteArray input;
    const int parts = std::uniform_int_distribution<int>(0, 24)(random);
    for (int i = 0; i < parts; ++i) {
        switch (std::uniform_int_distribution<int>(0, 3)(random)) {
        case 0: {
            const std::size_t pick
                = std::uniform_int_distribution<std::size_t>(0, std::size(tokens) - 1)(random);
            const char *token = tokens[pick];
            // "\0" is a token of one zero byte; the others end at their terminator.
            input.append(token, token[0] == '\0' ? 1 : qsizetype(std::strlen(token)));
            break;
        }
        case 1:
            input.append(char(std::uniform_int_distribution<int>(0, 255)(random)));
            break;
        default:
            input.append(char(std::uniform_int_distribution<int>(' ', '~')(random)));
            break;
        }
    }
    return input;
}

void run(const QByteArray &input)
{
    LLVMFuzzerTestOneInput(
        reinterpret_cast<const std::uint8_t *>(input.constData()), std::size_t(input.size()));
}

} // namespace

// fuzz_textrules [--runs N] [--seconds S] [--seed N] [FILE...]: files are replayed once
// each; otherwise N random inputs from the seed, stopping early after S seconds.
int main(int argc, char **argv)
{
    long runs = 20000;
    long seconds = 20;
    unsigned seed = 20260101;
    QStringList files;
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (i + 1 < argc && arg == "--runs")
            runs = std::atol(argv[++i]);
        else if (i + 1 < argc && arg == "--seconds")
            seconds = std::atol(argv[++i]);
        else if (i + 1 < argc && arg == "--seed")
            seed = unsigned(std::strtoul(argv[++i], nullptr, 10));
        else
            files.append(QString::fromLocal8Bit(arg));
    }

    for (const QString &name : files) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", qPrintable(name));
            return 2;
        }
        run(file.readAll());
    }
    if (!files.isEmpty())
        return 0;

    std::mt19937 random(seed);
    QElapsedTimer clock;
    clock.start();
    long done = 0;
    while (done < runs && clock.elapsed() < seconds * 1000) {
        run(randomInput(random));
        ++done;
    }
    std::printf("%ld inputs from seed %u in %lld ms\n", done, seed, clock.elapsed());
    return 0;
}

#endif
