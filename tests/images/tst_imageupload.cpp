#include "dialogs/imageuploadform.h"
#include "images/filenames.h"
#include "images/uploadflow.h"
#include "images/uploadrules.h"

#include "../common/datarows.h"
#include "../common/ftpserver.h"

#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Vantry;
using namespace Qt::StringLiterals;
using namespace Vantry::Images;
using VantryTest::FtpServer;

namespace {

// String columns, and a row per line of rows: its name, then its cells.
void table(std::initializer_list<const char *> columns,
    std::initializer_list<std::initializer_list<const char *>> rows)
{
    for (const char *column : columns)
        QTest::addColumn<QString>(column);
    for (const auto &row : rows) {
        auto cell = row.begin();
        QTestData &data = QTest::newRow(*cell);
        while (++cell != row.end())
            data << QString::fromUtf8(*cell);
    }
}

QStringList list(const QString &text, QChar separator = u' ')
{
    return text.split(separator, Qt::SkipEmptyParts);
}

// Collects what a flow reports until it finishes.
struct FlowRecord
{
    explicit FlowRecord(UploadFlow &flow)
        : failed(&flow, &UploadFlow::failed)
        , finished(&flow, &UploadFlow::finished)
        , uploaded(&flow, &UploadFlow::imageUploaded)
        , progress(&flow, &UploadFlow::fileProgress)
    { }
    QString messages() const
    {
        QStringList all;
        for (const QList<QVariant> &signal : failed)
            all << signal.at(0).toString();
        return all.join(QLatin1Char('\n'));
    }
    QSignalSpy failed;
    QSignalSpy finished;
    QSignalSpy uploaded;
    QSignalSpy progress;
};

} // namespace

class tst_ImageUpload : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QFile::exists(VantryTest::python));
        m_ftp = std::make_unique<FtpServer>(FtpServer::Ftp);
        m_ftps = std::make_unique<FtpServer>(FtpServer::Ftps);
        m_sftp = std::make_unique<FtpServer>(FtpServer::Sftp);
    }

    void remoteNames_data()
    {
        // strip: "y" or not; existing: the names in the folder; expected empty: refused.
        table({"local", "prefix", "suffix", "strip", "existing", "rule", "expected"},
            {
                {"plain", "/tmp/a.jpg", "", "", "y", "", "refuse", "a.jpg"},
                {"prefix, suffix", "/tmp/a.jpg", "web-", "-small", "y", "", "refuse",
                    "web-a-small.jpg"},
                {"stripped", "/tmp/Sommer Foto (1)ä.JPG", "", "", "y", "", "refuse",
                    "Sommer_Foto_1.JPG"},
                {"kept unstripped", "/tmp/Foto ä.png", "", "", "", "", "refuse", "Foto ä.png"},
                {"no slashes ever", "/tmp/a.png", "../../", "", "", "", "refuse", "....a.png"},
                {"no line breaks ever", "/tmp/a\r\nDELE b.png", "", "\n", "", "", "refuse",
                    "aDELE b.png"},
                {"nothing left", "/tmp/äöü.gif", "", "", "y", "", "refuse", "image.gif"},
                {"numbered", "/tmp/a.jpg", "", "", "y", "a.jpg a_001.jpg", "number", "a_002.jpg"},
                {"overwritten", "/tmp/a.jpg", "", "", "y", "a.jpg", "overwrite", "a.jpg"},
                {"refused", "/tmp/a.jpg", "", "", "y", "a.jpg", "refuse", ""},
            });
        QStringList all{u"b.png"_s};
        for (int i = 1; i <= 999; ++i)
            all << Images::incrementFileName(u"b.png"_s, i);
        row("every number taken", "/tmp/b.png", "", "", "y", all.join(u' '), "number", "");
    }

    void remoteNames()
    {
        auto [local, prefix, suffix, strip, existing, rule]
            = fetch<QString, QString, QString, QString, QString, QString>(
                "local", "prefix", "suffix", "strip", "existing", "rule");
        const QString name = remoteFileName(local, prefix, suffix, !strip.isEmpty());
        const QStringList taken = list(existing);
        const NameCollision collision = rule == u"number"_s ? NameCollision::Number
            : rule == u"overwrite"_s                        ? NameCollision::Overwrite
                                                            : NameCollision::Refuse;
        QTEST(freeRemoteName(name, QSet<QString>(taken.cbegin(), taken.cend()), collision)
                  .value_or(QString()),
            "expected");
    }

    void restrictedFolder_data()
    {
        // expected empty: refused.
        table({"restricted", "current", "requested", "expected"},
            {
                {"subfolder", "/site", "/site", "img", "/site/img"},
                {"up inside", "/site", "/site/img/2024", "../..", "/site"},
                {"messy absolute", "site/", "/site", "//site/./img//", "/site/img"},
                {"no restriction", "", "/", "/anything/else", "/anything/else"},
                {"literal percent name", "/site", "/site", "%2e%2e", "/site/%2e%2e"},
                {"up out", "/site", "/site", "..", ""},
                {"down and out", "/site", "/site", "img/../../etc", ""},
                {"absolute outside", "/site", "/site/img", "/etc", ""},
                {"sibling with the same start", "/site", "/site", "/site2", ""},
                {"above the login folder", "", "/", "/..", ""},
                {"backslashes", "/site", "/site", "img\\..\\..\\etc", ""},
                {"home folder", "/site", "/site", "~root", ""},
                {"three dots", "/site", "/site", "...", ""},
                {"dots and spaces", "/site", "/site", ". .", ""},
                {"control character", "/site", "/site", "img\r\nCWD /", ""},
            });
    }

    void restrictedFolder()
    {
        auto [restricted, current, requested]
            = fetch<QString, QString, QString>("restricted", "current", "requested");
        const std::optional<QString> root = uploadRoot(restricted);
        QVERIFY(root);
        QTEST(resolveUploadFolder(*root, current, requested).value_or(QString()), "expected");
    }

    void publishedAddress_data()
    {
        table({"baseURL", "vcDirectory", "root", "remote", "expected"},
            {
                {"relative folder below the base", "http://www.example.com/", "images/", "/www",
                    "/www/2024/a b.jpg", "http://www.example.com/images/2024/a%20b.jpg"},
                {"site root folder", "http://www.example.com/cms", "/img", "/", "/a.jpg",
                    "http://www.example.com/img/a.jpg"},
                {"absolute address wins", "http://www.example.com/", "https://cdn.example.com/i/",
                    "/", "/x/a.jpg", "https://cdn.example.com/i/x/a.jpg"},
                {"no base", "", "images", "/up", "/up/a.jpg", "images/a.jpg"},
                {"no folder", "http://h/", "", "/", "/a.jpg", "http://h/a.jpg"},
            });
    }

    void publishedAddress()
    {
        auto [baseURL, vcDirectory, root, remote]
            = fetch<QString, QString, QString, QString>("baseURL", "vcDirectory", "root", "remote");
        QTEST(Images::publishedAddress(baseURL, vcDirectory, root, remote), "expected");
    }

    void upload_data()
    {
        // settings, as letters: Multiple files, Overwrite, Increment, Strip. local is split at
        // '|', existing and expected (the server afterwards) at spaces, or at '|' when it has one.
        table({"scheme", "existingNames", "localNames", "settings", "folder", "expectedNames",
                  "error"},
            {
                {"one file", "ftp", "", "a.jpg", "MIS", "/", "/a.jpg", ""},
                {"one file, explicit TLS", "ftps", "", "a.jpg", "MIS", "/img", "/img/a.jpg", ""},
                {"one file, SFTP", "sftp", "", "a b.jpg", "MI", "/img", "/img/a b.jpg|", ""},
                {"several files, prefix, suffix, stripped", "ftp", "/img/x", "my photo.jpg|b.png",
                    "MIS", "/img", "/img/pre-b-post.png /img/pre-my_photo-post.jpg /img/x", ""},
                {"several files not allowed", "ftp", "", "a.jpg|b.png", "IS", "/", "",
                    "Only one file"},
                {"collision numbered", "ftp", "/a.jpg /a_001.jpg", "a.jpg", "MIS", "/",
                    "/a.jpg /a_001.jpg /a_002.jpg", ""},
                {"collision numbered, SFTP", "sftp", "/a.jpg", "a.jpg", "MIS", "/",
                    "/a.jpg /a_001.jpg", ""},
                {"collision overwritten", "ftp", "/a.jpg", "a.jpg", "MOIS", "/", "/a.jpg", ""},
                {"collision overwritten, SFTP", "sftp", "/a.jpg", "a.jpg", "MOIS", "/", "/a.jpg",
                    ""},
                {"collision refused", "ftp", "/a.jpg", "a.jpg", "MS", "/", "/a.jpg",
                    "already in /"},
                {"leaving the restricted folder", "ftp", "/site/keep", "a.jpg", "MIS", "../outside",
                    "/site/keep", "may only go to /site"},
            });
    }

    void upload()
    {
        auto [scheme, settings, folder, error, existingNames, localNames, expectedNames]
            = fetch<QString, QString, QString, QString, QString, QString, QString>("scheme",
                "settings", "folder", "error", "existingNames", "localNames", "expectedNames");
        const QStringList existing = list(existingNames);
        const QStringList local = list(localNames, u'|');
        const QStringList expected
            = list(expectedNames, expectedNames.contains(u'|') ? u'|' : u' ');

        FtpServer &server = this->server(scheme);
        server.clear();
        for (const QString &path : std::as_const(existing))
            server.put(path);
        QStringList files;
        for (const QString &name : std::as_const(local))
            files << localFile(name);

        ImageUploadValues values = account(server, scheme);
        values.FTP_AllowMultiableFiles = settings.contains(QLatin1Char('M'));
        values.FTP_OverWriteFiles = settings.contains(QLatin1Char('O'));
        values.FTP_IncermentExistingFileNames = settings.contains(QLatin1Char('I'));
        values.FTP_StripInvalidCharacters = settings.contains(QLatin1Char('S'));
        if (local.size() > 1) {
            values.FTP_FileNamePrefix = u"pre-"_s;
            values.FTP_FileNameSuffix = u"-post"_s;
        }
        if (existing.value(0).startsWith(u"/site"_s)) {
            values.FTP_RistrictedDirectory = u"/site"_s;
        }
        values.BaseURL = u"http://www.example.com/"_s;
        values.ImageVCDirectory = u"pictures/"_s;
        if (folder != u"/"_s && !folder.startsWith(u".."_s))
            QDir(server.root()).mkpath(folder.mid(1));

        UploadFlow flow(values);
        FlowRecord record(flow);
        if (flow.upload(files, folder))
            QVERIFY(record.finished.wait(20000));
        if (error.isEmpty()) {
            QCOMPARE(record.messages(), QString());
            QCOMPARE(record.finished.value(0).value(0).toBool(), true);
            QCOMPARE(record.uploaded.size(), files.size());
            const QString remote = record.uploaded.at(0).at(1).toString();
            QCOMPARE(QUrl::fromPercentEncoding(record.uploaded.at(0).at(2).toByteArray()),
                u"http://www.example.com/pictures"_s + remote);
            QCOMPARE(QFile(server.root() + remote).size(), 1000);
        } else {
            QVERIFY2(record.messages().contains(error), qPrintable(record.messages()));
            QCOMPARE(record.uploaded.size(), 0);
        }
        QCOMPARE(server.files(), expected);
    }

    void failure_data()
    {
        // trust: "y" when the test's certificate authority is given.
        table({"scheme", "user", "password", "trust", "error"},
            {
                {"wrong password", "ftp", "editor", "Wr0ng-Secret", "y",
                    "refused the user name or password"},
                {"wrong password over TLS", "ftps", "editor", "Wr0ng-Secret", "y",
                    "refused the user name or password"},
                {"unknown certificate", "ftps", "editor", "editor-pass", "",
                    "certificate could not be verified"},
                {"wrong password over SFTP", "sftp", "editor", "Wr0ng-Secret", "y",
                    "refused the user name or password"},
                {"unknown host key", "sftp", "editor", "editor-pass", "", "host key"},
                {"server full", "ftp", "full", "full-pass", "y", "no room"},
                {"no server", "closed", "editor", "editor-pass", "y", "Cannot connect"},
                {"not a server address", "http", "editor", "editor-pass", "y", "not supported"},
            });
    }

    void failure()
    {
        auto [scheme, user, password, trust, error]
            = fetch<QString, QString, QString, QString, QString>(
                "scheme", "user", "password", "trust", "error");

        FtpServer &server = this->server(scheme);
        server.clear();
        ImageUploadValues values = account(server, scheme, user);
        values.FTP_Password = password;
        if (trust.isEmpty())
            values.certificateAuthorities.clear();
        if (scheme == u"closed"_s)
            values.FTP_ServerName = u"127.0.0.1:1"_s;

        UploadFlow flow(values);
        FlowRecord record(flow);
        if (flow.open())
            QTRY_VERIFY_WITH_TIMEOUT(!flow.isBusy(), 30000);
        if (flow.upload({localFile(u"a.jpg"_s)}))
            QVERIFY(record.finished.wait(30000));
        QCOMPARE(record.uploaded.size(), 0);
        QVERIFY2(record.messages().contains(error), qPrintable(record.messages()));
        QVERIFY(!record.messages().contains(password));
        QCOMPARE(server.files(), QStringList());
    }

    void cutMidTransfer_data()
    {
        QTest::addColumn<FtpServer::Protocol>("protocol");
        QTest::addColumn<bool>("serverStops");
        QTest::addColumn<QString>("error");
        row("cancelled", FtpServer::Ftp, false, "The upload was cancelled.");
        row("cancelled, SFTP", FtpServer::Sftp, false, "The upload was cancelled.");
        row("server stops", FtpServer::Ftp, true, "The connection to the server was lost.");
    }

    void cutMidTransfer()
    {
        auto [protocol, serverStops, error]
            = fetch<FtpServer::Protocol, bool, QString>("protocol", "serverStops", "error");
        FtpServer server(protocol);
        server.put(u"/a.jpg"_s, "the old picture");
        ImageUploadValues values
            = account(server, protocol == FtpServer::Sftp ? u"sftp"_s : u"ftp"_s, u"slow"_s);
        values.FTP_OverWriteFiles = true;
        UploadFlow flow(values);
        FlowRecord record(flow);
        QVERIFY(flow.upload({localFile(u"a.jpg"_s, 4 << 20)}));
        QTRY_VERIFY_WITH_TIMEOUT(
            !record.progress.isEmpty() && record.progress.last().at(1).toLongLong() > 100000,
            20000);
        if (serverStops)
            server.stop();
        else
            flow.cancel();
        QVERIFY(record.finished.wait(40000));
        QCOMPARE(record.finished.at(0).at(0).toBool(), false);
        QCOMPARE(record.uploaded.size(), 0);
        QCOMPARE(record.messages(), error);
        if (serverStops)
            return;
        // The overwritten file is still the old one, and nothing partial is left beside it.
        QCOMPARE(server.files(), QStringList{u"/a.jpg"_s});
        QFile old(server.root() + u"/a.jpg"_s);
        QVERIFY(old.open(QIODevice::ReadOnly));
        QCOMPARE(old.readAll(), QByteArray("the old picture"));
    }

    void formBrowsesInsideTheRestrictedFolder()
    {
        m_ftps->clear();
        m_ftps->put(u"/site/img/2024/old.png"_s);
        m_ftps->put(u"/outside/secret.txt"_s);
        ImageUploadValues values = account(*m_ftps, u"ftps"_s);
        values.FTP_RistrictedDirectory = u"/site"_s;
        values.FTP_InitialDir = u"/site/img"_s;
        values.ImageVCDirectory = u"http://www.example.com/"_s;

        Dialogs::ImageUploadForm form(values);
        auto *folders = form.findChild<QListWidget *>(u"lstFolders"_s);
        const auto shown = [folders] {
            QStringList names;
            for (int i = 0; i < folders->count(); ++i)
                names << folders->item(i)->text();
            return names;
        };
        QTRY_COMPARE_WITH_TIMEOUT(shown(), (QStringList{u".."_s, u"2024"_s}), 20000);
        // The listing is in: the form takes input again.
        QTRY_VERIFY_WITH_TIMEOUT(folders->isEnabled(), 5000);
        QVERIFY(form.enterFolder(u".."_s));
        QTRY_COMPARE_WITH_TIMEOUT(form.flow().folder(), u"/site"_s, 20000);
        QTRY_COMPARE_WITH_TIMEOUT(shown(), QStringList{u"img"_s}, 20000);
        QVERIFY(!form.enterFolder(u".."_s));
        QVERIFY(!form.enterFolder(u"/outside"_s));
        QVERIFY(form.status().contains(u"may only go to /site"_s));
        QVERIFY(form.enterFolder(u"img/2024"_s));
        QTRY_COMPARE_WITH_TIMEOUT(form.flow().folder(), u"/site/img/2024"_s, 20000);
        QTRY_VERIFY_WITH_TIMEOUT(!form.flow().isBusy(), 20000);

        form.addFiles({localFile(u"old.png"_s)});
        QSignalSpy finished(&form.flow(), &UploadFlow::finished);
        QVERIFY(form.startUpload());
        QVERIFY(finished.wait(20000));
        const ImageUploadValues result = form.values();
        QCOMPARE(result.Cancel, false);
        QCOMPARE(result.remotePaths, QStringList{u"/site/img/2024/old_001.png"_s});
        QCOMPARE(result.addresses, QStringList{u"http://www.example.com/img/2024/old_001.png"_s});
        QCOMPARE(m_ftps->files(),
            (QStringList{u"/outside/secret.txt"_s, u"/site/img/2024/old.png"_s,
                u"/site/img/2024/old_001.png"_s}));
    }

    void formStoppedWhileListing_data()
    {
        QTest::addColumn<bool>("escape");
        row("Escape closes the form", true);
        row("Cancel gives the form back", false);
    }

    void formStoppedWhileListing()
    {
        const bool escape = std::get<0>(fetch<bool>("escape"));
        Dialogs::ImageUploadForm form(account(*m_ftp, u"ftp"_s));
        form.show();
        QVERIFY(form.flow().isBusy());
        if (escape) {
            form.reject();
            QTRY_VERIFY_WITH_TIMEOUT(!form.isVisible(), 10000);
        } else {
            form.cancelOrClose();
            QTRY_VERIFY_WITH_TIMEOUT(
                form.findChild<QListWidget *>(u"lstFolders"_s)->isEnabled(), 10000);
        }
        QVERIFY(!form.flow().isBusy());
        QCOMPARE(form.values().Cancel, true);
    }

private:
    QString localFile(const QString &name, qint64 size = 1000)
    {
        const QString path = m_local.filePath(name);
        return VantryTest::writeFile(path, QByteArray(size, 'x')) ? path : QString();
    }

    ImageUploadValues account(
        const FtpServer &server, const QString &scheme, const QString &user = u"editor"_s) const
    {
        ImageUploadValues values;
        values.FTP_ServerName = server.address(scheme);
        values.FTP_UserName = user;
        values.FTP_Password = user + u"-pass"_s;
        values.certificateAuthorities = server.certificate();
        return values;
    }

    FtpServer &server(const QString &scheme) const
    {
        return scheme == u"ftps"_s ? *m_ftps : scheme == u"sftp"_s ? *m_sftp : *m_ftp;
    }

    QTemporaryDir m_local;
    std::unique_ptr<FtpServer> m_ftp;
    std::unique_ptr<FtpServer> m_ftps;
    std::unique_ptr<FtpServer> m_sftp;
};

QTEST_MAIN(tst_ImageUpload)
#include "tst_imageupload.moc"
