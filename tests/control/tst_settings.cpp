#include "../common/datarows.h"
#include "../common/files.h"
#include "control/settings.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Vantry;
using namespace Qt::StringLiterals;
using namespace Vantry::Control;
using VantryTest::writeFile;

namespace {

// Records the order in which properties are asked for and stored.
class RecordingBag : public MemoryPropertyBag
{
public:
    mutable QStringList reads;
    QStringList writes;

protected:
    QVariant rawRead(const QString &name) const override
    {
        reads.append(name);
        return MemoryPropertyBag::rawRead(name);
    }
    void rawWrite(const QString &name, const QVariant &value) override
    {
        writes.append(name);
        MemoryPropertyBag::rawWrite(name, value);
    }
};

// Keeps the errors a bag reports as they happen.
struct ErrorLog : PropertyBag::ErrorReceiver
{
    QStringList messages;
    void propertyBagError(const QString &message) override { messages.append(message); }
};

const QStringList expectedBagOrder = QStringLiteral(
    "SetDisplayHeight ScrollTop ScrollLeft GetHtmlSource GetHtmlText SetHtmlSource "
    "SetDisplayWidth BaseURL ImageDirectory ImageVCDirectory ContentPages PortalPages "
    "ContentSites FTP_ServerName FTP_Username FTP_Password FTP_InitialDir isDirty "
    "UploadImagesWhenInserted CopyImagesWhenInserted FTP_FileNamePrefix FTP_FileNameSuffix "
    "FTP_RistrictedDirectory FTP_AllowMultiableFiles FTP_OverWriteFiles "
    "FTP_IncermentExistingFileNames FTP_StripInvalidCharacters PreserveWhiteSpace "
    "ReturnFullDocument MakePathsRelativeOnSave Enabled LinkTargets ToolbarDisplay "
    "TabStripDisplay PageTitle KeyWords ChangeImageOnDblClickTags RelativePathToRoot "
    "ChangeImageOnDblClick DisableContextMenus ScrollBars IncermentExistingFileNames "
    "DefaultFontName DefaultFontSize DefaultFontColor ApplicationDirectoryPath "
    "SpellCheckAsYouType")
                                         .split(u' ');

// Every field away from its default, with texts that INI files tend to mangle.
Settings changedSettings()
{
    const QStringList texts = {u"a, b"_s, u"S3cret,Passw0rd"_s, u"  padded  "_s, u"one\ntwo"_s,
        u"@Invalid()"_s, u"#no note"_s, u"key=value; x"_s, u"\"quoted\""_s, u"C:\\site\\img\\"_s,
        u"ünïcødé ✓"_s};
    const QList<int> integers = {-32768, 32767, -1, 1234};

    Settings settings;
    int index = 0;
    for (const PropertyInfo &info : storedProperties()) {
        if (info.kind() == PropertyBag::Kind::String)
            info.set(settings, texts.at(index % texts.size()));
        else if (info.kind() == PropertyBag::Kind::Boolean)
            info.set(settings, !info.defaultValue().toBool());
        else
            info.set(settings, integers.at(index % integers.size()));
        ++index;
    }
    return settings;
}

QString firstDifference(const Settings &actual, const Settings &expected)
{
    for (const PropertyInfo &info : storedProperties()) {
        if (info.get(actual) != info.get(expected))
            return QString(info.name) + u": "_s + info.get(actual).toString() + u" instead of "_s
                + info.get(expected).toString();
    }
    return {};
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:

    void defaults()
    {
        const QHash<QString, QVariant> notEmpty = {
            {u"Enabled"_s, true},
            {u"FTP_AllowMultiableFiles"_s, u"true"_s},
            {u"FTP_OverWriteFiles"_s, u"false"_s},
            {u"FTP_IncermentExistingFileNames"_s, u"true"_s},
            {u"FTP_StripInvalidCharacters"_s, u"true"_s},
            {u"DefaultFontName"_s, u"arial"_s},
            {u"DefaultFontSize"_s, u"10pt"_s},
            {u"DefaultFontColor"_s, u"#000000"_s},
            {u"SpellCheckAsYouType"_s, true},
        };

        Settings settings = changedSettings();
        initProperties(settings);
        for (const PropertyInfo &info : storedProperties()) {
            const QVariant empty = info.kind() == PropertyBag::Kind::String ? QVariant(QString())
                : info.kind() == PropertyBag::Kind::Boolean                 ? QVariant(false)
                                                                            : QVariant(0);
            const QVariant expected = notEmpty.value(QString(info.name), empty);
            QVERIFY2(info.get(settings) == expected, info.name.data());
            QVERIFY2(info.defaultValue() == expected, info.name.data());
        }
    }

    void names()
    {
        const PropertyInfo *userName = findProperty(u"FTP_UserName");
        QVERIFY(userName);
        QCOMPARE(QString(userName->bagName), u"FTP_Username"_s);
        QCOMPARE(QString(userName->announcedName), u"FTP_UserName"_s);
        QVERIFY(!findProperty(u"FTP_Username"));

        const PropertyInfo *plainText = findProperty(u"GetPlainText");
        QVERIFY(plainText);
        QCOMPARE(QString(plainText->bagName), u"GetHtmlText"_s);
        QVERIFY(plainText->announcedName.isEmpty());

        const PropertyInfo *increment = findProperty(u"IncermentExistingFileNames");
        QVERIFY(increment);
        QCOMPARE(increment->kind(), PropertyBag::Kind::Boolean);
        QCOMPARE(QString(increment->announcedName), u"FTP_IncermentExistingFileNames"_s);

        MemoryPropertyBag bag;
        Settings settings;
        settings.IncermentExistingFileNames = true;
        writeProperties(settings, bag);
        QVERIFY(!bag.contains(u"FTP_UserName"_s));
        QVERIFY(!bag.contains(u"GetPlainText"_s));
        // The Boolean and the text of the same name are separate settings.
        QCOMPARE(bag.value(u"IncermentExistingFileNames"_s), QVariant(true));
        QCOMPARE(bag.value(u"FTP_IncermentExistingFileNames"_s), QVariant(u"true"_s));
    }

    void bagOrder()
    {
        RecordingBag bag;
        Settings settings;
        readProperties(settings, bag);
        QCOMPARE(bag.reads, expectedBagOrder);
        writeProperties(settings, bag);
        QCOMPARE(bag.writes, expectedBagOrder);
    }

    void roundTrip_data()
    {
        QTest::addColumn<bool>("iniFile");
        row("memory", false);
        row("ini file", true);
    }

    void roundTrip()
    {
        QFETCH(bool, iniFile);

        const Settings written = changedSettings();
        Settings read;
        Settings defaults = written;
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString fileName = dir.filePath(u"host/editor.ini"_s);
        std::unique_ptr<PropertyBag> bag;
        if (iniFile) {
            {
                IniPropertyBag saved(fileName);
                writeProperties(written, saved);
                QVERIFY(saved.sync());
            }
            bag = std::make_unique<IniPropertyBag>(fileName);
        } else {
            bag = std::make_unique<MemoryPropertyBag>();
            writeProperties(written, *bag);
        }
        readProperties(read, *bag);
        QVERIFY2(bag->errors().isEmpty(), qPrintable(bag->errors().join(u'\n')));
        const QString difference = firstDifference(read, written);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));

        // Values equal to their defaults come back as well.
        writeProperties(Settings(), *bag);
        readProperties(defaults, *bag);
        QVERIFY(firstDifference(defaults, Settings()).isEmpty());
    }

    void convert_data()
    {
        using Kind = PropertyBag::Kind;
        columns<QVariant, Kind>("raw", "kind");
        QTest::addColumn<QVariant>("expected"); // invalid when rejected

        row("TRUE", QVariant(u"TRUE"_s), Kind::Boolean, QVariant(true));
        row("False", QVariant(u"False"_s), Kind::Boolean, QVariant(false));
        row("\"-1\"", QVariant(u"-1"_s), Kind::Boolean, QVariant(true));
        row("1", QVariant(1), Kind::Boolean, QVariant(true));
        row("2 as Boolean", QVariant(2), Kind::Boolean, QVariant());

        row("short", QVariant::fromValue<qint16>(-32768), Kind::Integer, QVariant(-32768));
        row("\" 32767 \"", QVariant(u" 32767 "_s), Kind::Integer, QVariant(32767));
        row("whole double", QVariant(12.0), Kind::Integer, QVariant(12));
        row("\"32768\"", QVariant(u"32768"_s), Kind::Integer, QVariant());
        row("huge unsigned", QVariant(quint64(-1)), Kind::Integer, QVariant());
        row("fraction", QVariant(12.5), Kind::Integer, QVariant());
        row("bool as Integer", QVariant(true), Kind::Integer, QVariant());

        row("list as text", QVariant(QStringList{u"a"_s}), Kind::String, QVariant());
    }

    void convert()
    {
        auto [raw, kind, expected]
            = fetch<QVariant, PropertyBag::Kind, QVariant>("raw", "kind", "expected");

        QString error;
        const QVariant value = PropertyBag::convert(u"Prop"_s, raw, kind, &error);
        QCOMPARE(value, expected);
        QCOMPARE(value.typeId(), expected.typeId());
        QCOMPARE(error.contains(u"\"Prop\""_s), !expected.isValid());
    }

    void badValues_data()
    {
        columns<QString, QVariant, QString>("key", "raw", "shown");

        row("70000", "ScrollTop", QVariant(70000), "70000");
        row("-40000", "SetDisplayWidth", QVariant(u"-40000"_s), "-40000");
        row("12abc", "ScrollLeft", QVariant(u"12abc"_s), "12abc");
        row("maybe", "Enabled", QVariant(u"maybe"_s), "maybe");
    }

    void badValues()
    {
        auto [key, raw, shown] = fetch<QString, QVariant, QString>("key", "raw", "shown");

        MemoryPropertyBag bag;
        ErrorLog log;
        bag.setErrorReceiver(&log);
        const QStringList &handled = log.messages;
        bag.setValue(u"BaseURL"_s, u"http://example.org/"_s);
        bag.setValue(u"ScrollBars"_s, u"-1"_s);
        bag.setValue(u"SetDisplayHeight"_s, u"300"_s);
        bag.setValue(key, raw);

        Settings settings = changedSettings();
        readProperties(settings, bag);

        QCOMPARE(handled.size(), 1);
        QCOMPARE(bag.errors(), handled);
        QVERIFY2(handled.first().contains(u'"' + key + u'"'), qPrintable(handled.first()));
        QVERIFY2(handled.first().contains(shown), qPrintable(handled.first()));
        const auto property = std::find_if(storedProperties().begin(), storedProperties().end(),
            [name = key](const PropertyInfo &info) { return info.bagName == name; });
        QCOMPARE(property->get(settings), property->defaultValue());

        QCOMPARE(settings.BaseURL, u"http://example.org/"_s);
        QCOMPARE(settings.ScrollBars, true);
        QCOMPARE(settings.SetDisplayHeight, qint16(300));
    }

    void handEditedIniTextKeepsCommas_data()
    {
        columns<QString, QByteArray, QString>("group", "line", "expected");

        row("password", QString(), QByteArray("FTP_Password=S3cret,Passw0rd"), "S3cret,Passw0rd");
        row("spaces around commas, in a group", "HTMLEditorComponent",
            QByteArray("LinkTargets = _blank, _top ,main "), "_blank, _top ,main");
        row("quotes, escapes and a comment", QString(),
            QByteArray("PageTitle=\"a, b \",c\\x41\\t; note"), "a, b ,cA\t");
    }

    void handEditedIniTextKeepsCommas()
    {
        auto [group, line, expected]
            = fetch<QString, QByteArray, QString>("group", "line", "expected");

        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString fileName = dir.filePath(u"editor.ini"_s);
        const QByteArray section = group.isEmpty() ? "General" : group.toUtf8();
        QVERIFY(writeFile(fileName, "[Other]\n" + line + "\n[" + section + "]\n" + line + "\n"));
        IniPropertyBag bag(fileName, group);
        Settings settings;
        readProperties(settings, bag);
        QVERIFY2(bag.errors().isEmpty(), qPrintable(bag.errors().join(u'\n')));
        const QString name = QString::fromUtf8(line.left(line.indexOf('=')).trimmed());
        const auto property = std::find_if(storedProperties().begin(), storedProperties().end(),
            [&name](const PropertyInfo &info) { return info.bagName == name; });
        QCOMPARE(property->get(settings).toString(), expected);
    }

    void malformedIniFile()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        const QString fileName = dir.filePath(u"editor.ini"_s);
        const QByteArray content = "[HTMLEditorComponent]\nBaseURL=http://example.org/\n"
                                   "ScrollTop=70000\n[broken\nScrollLeft=5\n";
        QVERIFY(writeFile(fileName, content));

        {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"malformed"_s));
            IniPropertyBag bag(fileName);
            ErrorLog log;
            bag.setErrorReceiver(&log);
            QCOMPARE(bag.errors().size(), 1);
            QVERIFY2(bag.errors().first().contains(fileName), qPrintable(bag.errors().first()));

            Settings settings;
            readProperties(settings, bag);
            QCOMPARE(settings.BaseURL, u"http://example.org/"_s);
            QCOMPARE(bag.errors().size(), 2);
            QVERIFY(bag.errors().last().contains(u"\"ScrollTop\""_s));

            // Changes are kept for reading but never replace what could not be parsed.
            settings.PageTitle = u"Title"_s;
            writeProperties(settings, bag);
            Settings reread;
            readProperties(reread, bag);
            QCOMPARE(reread.PageTitle, u"Title"_s);
            QVERIFY(!bag.sync());
            QCOMPARE(bag.errors().size(), 3);
        }
        QCOMPARE(VantryTest::readBytes(fileName), content);
    }

    void unwritableIniFile()
    {
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        // A file stands where the folder would have to be made; permissions would not stop a
        // test run as root.
        const QString blocker = dir.filePath(u"blocker"_s);
        QVERIFY(writeFile(blocker, "x"));
        const QString fileName = blocker + u"/editor.ini"_s;

        IniPropertyBag bag(fileName);
        ErrorLog log;
        bag.setErrorReceiver(&log);
        const QStringList &handled = log.messages;
        writeProperties(Settings(), bag);
        QVERIFY(!bag.sync());
        QCOMPARE(handled.size(), 1);
        QVERIFY2(handled.first().contains(fileName), qPrintable(handled.first()));
    }
};

QTEST_GUILESS_MAIN(TestSettings)

#include "tst_settings.moc"
