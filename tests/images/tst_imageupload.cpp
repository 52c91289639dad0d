#include "control/settings.h"
#include "dialogs/imageuploadform.h"
#include "images/filenames.h"
#include "images/uploadcommand.h"
#include "images/uploadflow.h"
#include "images/uploadrules.h"

#include "../common/recordingprompts.h"

#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Vantry;
using namespace Qt::StringLiterals;
using namespace Vantry::Images;

namespace {

const QString python = QStringLiteral("/usr/bin/python3");

// pyftpdlib on 127.0.0.1, serving a temporary folder; stopped with the object.
class FtpServer
{
public:
    explicit FtpServer(bool tls)
    {
        QStringList arguments{QStringLiteral(VANTRY_FTP_SERVER_SCRIPT), root(),
            m_dir.filePath(QStringLiteral("port"))};
        if (tls) {
            QProcess openssl;
            openssl.start(QStringLiteral("openssl"),
                {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                    QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-days"),
                    QStringLiteral("1"), QStringLiteral("-subj"), QStringLiteral("/CN=localhost"),
                    QStringLiteral("-addext"), QStringLiteral("subjectAltName=IP:127.0.0.1"),
                    QStringLiteral("-keyout"), m_dir.filePath(QStringLiteral("key.pem")),
                    QStringLiteral("-out"), certificate()});
            if (!openssl.waitForFinished(60000) || openssl.exitCode() != 0)
                qFatal("openssl could not make a certificate");
            arguments << certificate() << m_dir.filePath(QStringLiteral("key.pem"));
        }
        QDir(m_dir.path()).mkdir(QStringLiteral("root"));
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(python, arguments);
        QFile portFile(m_dir.filePath(QStringLiteral("port")));
        for (int i = 0; i < 200 && !portFile.exists(); ++i)
            QTest::qWait(50);
        if (!portFile.open(QIODevice::ReadOnly))
            qFatal("the test FTP server (python3-pyftpdlib) did not start");
        m_port = portFile.readAll().toInt();
    }
    ~FtpServer() { stop(); }

    void stop()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    QString root() const { return m_dir.filePath(QStringLiteral("root")); }
    QString certificate() const { return m_dir.filePath(QStringLiteral("cert.pem")); }
    QString address(const QString &scheme) const
    {
        return scheme + QStringLiteral("://127.0.0.1:") + QString::number(m_port);
    }
    // The files below the root, as "/a/b.jpg", sorted.
    QStringList files() const
    {
        QStringList found;
        const QString base = root();
        std::function<void(const QString &)> walk = [&](const QString &dir) {
            const QFileInfoList entries = QDir(dir).entryInfoList(
                QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
            for (const QFileInfo &entry : entries) {
                if (entry.isDir())
                    walk(entry.filePath());
                else
                    found << entry.filePath().mid(base.size());
            }
        };
        walk(base);
        return found;
    }
    void put(const QString &path, const QByteArray &content = "old")
    {
        QDir(root()).mkpath(QFileInfo(root() + path).path());
        QFile file(root() + path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void clear()
    {
        QDir(root()).removeRecursively();
        QDir(m_dir.path()).mkdir(QStringLiteral("root"));
    }

private:
    QTemporaryDir m_dir;
    QProcess m_process;
    int m_port = 0;
};

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
    void initTestCase();
    void incrementFileName_data();
    void incrementFileName();
    void remoteNames_data();
    void remoteNames();
    void restrictedFolder_data();
    void restrictedFolder();
    void publishedAddress_data();
    void publishedAddress();
    void upload_data();
    void upload();
    void failure_data();
    void failure();
    void cancelMidTransfer();
    void serverStopsMidTransfer();
    void formBrowsesInsideTheRestrictedFolder();
    void commandUploadsWhatTheDialogChose();

private:
    QString localFile(const QString &name, qint64 size = 1000);
    ImageUploadValues account(const FtpServer &server, const QString &scheme,
        const QString &user = QStringLiteral("editor")) const;

    QTemporaryDir m_local;
    std::unique_ptr<FtpServer> m_ftp;
    std::unique_ptr<FtpServer> m_ftps;
};

void tst_ImageUpload::initTestCase()
{
    QVERIFY(QFile::exists(python));
    m_ftp = std::make_unique<FtpServer>(false);
    m_ftps = std::make_unique<FtpServer>(true);
}

QString tst_ImageUpload::localFile(const QString &name, qint64 size)
{
    const QString path = m_local.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write(QByteArray(size, 'x'));
    return path;
}

ImageUploadValues tst_ImageUpload::account(
    const FtpServer &server, const QString &scheme, const QString &user) const
{
    ImageUploadValues values;
    values.FTP_ServerName = server.address(scheme);
    values.FTP_UserName = user;
    values.FTP_Password = user + QStringLiteral("-pass");
    values.certificateAuthorities = server.certificate();
    return values;
}

void tst_ImageUpload::incrementFileName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("counter");
    QTest::addColumn<QString>("expected");
    QTest::newRow("extension") << "photo.jpg" << 2 << "photo_002.jpg";
    QTest::newRow("several dots") << "my.photo.jpg" << 1 << "my.photo_001.jpg";
    QTest::newRow("no extension") << "photo" << 999 << "photo_999";
}

void tst_ImageUpload::incrementFileName()
{
    QFETCH(QString, name);
    QFETCH(int, counter);
    QTEST(Images::incrementFileName(name, counter), "expected");
}

void tst_ImageUpload::remoteNames_data()
{
    QTest::addColumn<QString>("local");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("strip");
    QTest::addColumn<QStringList>("existing");
    QTest::addColumn<int>("rule");
    QTest::addColumn<QString>("expected"); // empty: refused

    const int overwrite = int(NameCollision::Overwrite);
    const int number = int(NameCollision::Number);
    const int refuse = int(NameCollision::Refuse);
    QTest::newRow("plain") << "/tmp/a.jpg"
                           << ""
                           << "" << true << QStringList() << refuse << "a.jpg";
    QTest::newRow("prefix and suffix before the extension")
        << "/tmp/a.jpg"
        << "web-"
        << "-small" << true << QStringList() << refuse << "web-a-small.jpg";
    QTest::newRow("stripped") << "/tmp/Sommer Foto (1)ä.JPG"
                              << ""
                              << "" << true << QStringList() << refuse << "Sommer_Foto_1.JPG";
    QTest::newRow("kept unstripped") << "/tmp/Foto ä.png"
                                     << ""
                                     << "" << false << QStringList() << refuse << "Foto ä.png";
    QTest::newRow("slashes never survive") << "/tmp/a.png"
                                           << "../../"
                                           << "" << false << QStringList() << refuse << "....a.png";
    QTest::newRow("nothing left") << "/tmp/äöü.gif"
                                  << ""
                                  << "" << true << QStringList() << refuse << "image.gif";
    QTest::newRow("taken, numbered past the taken numbers")
        << "/tmp/a.jpg"
        << ""
        << "" << true << QStringList{u"a.jpg"_s, u"a_001.jpg"_s} << number << "a_002.jpg";
    QTest::newRow("taken, overwritten")
        << "/tmp/a.jpg"
        << ""
        << "" << true << QStringList{u"a.jpg"_s} << overwrite << "a.jpg";
    QTest::newRow("taken, refused") << "/tmp/a.jpg"
                                    << ""
                                    << "" << true << QStringList{u"a.jpg"_s} << refuse << "";
    QStringList all{u"b.png"_s};
    for (int i = 1; i <= 999; ++i)
        all << Images::incrementFileName(QStringLiteral("b.png"), i);
    QTest::newRow("every number taken") << "/tmp/b.png"
                                        << ""
                                        << "" << true << all << number << "";
}

void tst_ImageUpload::remoteNames()
{
    QFETCH(QString, local);
    QFETCH(QString, prefix);
    QFETCH(QString, suffix);
    QFETCH(bool, strip);
    QFETCH(QStringList, existing);
    QFETCH(int, rule);
    QFETCH(QString, expected);
    const QString name = remoteFileName(local, prefix, suffix, strip);
    const std::optional<QString> free = freeRemoteName(
        name, QSet<QString>(existing.cbegin(), existing.cend()), NameCollision(rule));
    QCOMPARE(free.value_or(QString()), expected);
}

void tst_ImageUpload::restrictedFolder_data()
{
    QTest::addColumn<QString>("restricted");
    QTest::addColumn<QString>("current");
    QTest::addColumn<QString>("requested");
    QTest::addColumn<QString>("expected"); // empty: refused

    QTest::newRow("subfolder") << "/site"
                               << "/site"
                               << "img"
                               << "/site/img";
    QTest::newRow("up inside") << "/site"
                               << "/site/img/2024"
                               << "../.."
                               << "/site";
    QTest::newRow("messy absolute") << "site/"
                                    << "/site"
                                    << "//site/./img//"
                                    << "/site/img";
    QTest::newRow("no restriction") << ""
                                    << "/"
                                    << "/anything/else"
                                    << "/anything/else";
    QTest::newRow("literal percent name") << "/site"
                                          << "/site"
                                          << "%2e%2e"
                                          << "/site/%2e%2e";
    QTest::newRow("up out") << "/site"
                            << "/site"
                            << ".."
                            << "";
    QTest::newRow("down and out") << "/site"
                                  << "/site"
                                  << "img/../../etc"
                                  << "";
    QTest::newRow("absolute outside") << "/site"
                                      << "/site/img"
                                      << "/etc"
                                      << "";
    QTest::newRow("sibling with the same start") << "/site"
                                                 << "/site"
                                                 << "/site2"
                                                 << "";
    QTest::newRow("above the login folder") << ""
                                            << "/"
                                            << "/.."
                                            << "";
    QTest::newRow("backslashes") << "/site"
                                 << "/site"
                                 << "img\\..\\..\\etc"
                                 << "";
    QTest::newRow("home folder") << "/site"
                                 << "/site"
                                 << "~root"
                                 << "";
    QTest::newRow("three dots") << "/site"
                                << "/site"
                                << "..."
                                << "";
    QTest::newRow("dots and spaces") << "/site"
                                     << "/site"
                                     << ". ."
                                     << "";
    QTest::newRow("control character") << "/site"
                                       << "/site"
                                       << "img\r\nCWD /"
                                       << "";
}

void tst_ImageUpload::restrictedFolder()
{
    QFETCH(QString, restricted);
    QFETCH(QString, current);
    QFETCH(QString, requested);
    const std::optional<QString> root = uploadRoot(restricted);
    QVERIFY(root);
    QTEST(resolveUploadFolder(*root, current, requested).value_or(QString()), "expected");
}

void tst_ImageUpload::publishedAddress_data()
{
    QTest::addColumn<QString>("baseURL");
    QTest::addColumn<QString>("vcDirectory");
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("remote");
    QTest::addColumn<QString>("expected");

    QTest::newRow("relative folder below the base")
        << "http://www.example.com/"
        << "images/"
        << "/www"
        << "/www/2024/a b.jpg"
        << "http://www.example.com/images/2024/a%20b.jpg";
    QTest::newRow("site root folder") << "http://www.example.com/cms"
                                      << "/img"
                                      << "/"
                                      << "/a.jpg"
                                      << "http://www.example.com/img/a.jpg";
    QTest::newRow("absolute address wins") << "http://www.example.com/"
                                           << "https://cdn.example.com/i/"
                                           << "/"
                                           << "/x/a.jpg"
                                           << "https://cdn.example.com/i/x/a.jpg";
    QTest::newRow("no base") << ""
                             << "images"
                             << "/up"
                             << "/up/a.jpg"
                             << "images/a.jpg";
    QTest::newRow("no folder") << "http://h/"
                               << ""
                               << "/"
                               << "/a.jpg"
                               << "http://h/a.jpg";
}

void tst_ImageUpload::publishedAddress()
{
    QFETCH(QString, baseURL);
    QFETCH(QString, vcDirectory);
    QFETCH(QString, root);
    QFETCH(QString, remote);
    QTEST(Images::publishedAddress(baseURL, vcDirectory, root, remote), "expected");
}

void tst_ImageUpload::upload_data()
{
    QTest::addColumn<QString>("scheme");
    QTest::addColumn<QStringList>("existing");
    QTest::addColumn<QStringList>("local");
    QTest::addColumn<QString>(
        "settings"); // switches, as letters: M multiple, O overwrite, I increment, S strip
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QStringList>("expected"); // the server afterwards
    QTest::addColumn<QString>("error");

    QTest::newRow("one file") << "ftp" << QStringList() << QStringList{u"a.jpg"_s} << "MIS"
                              << "/" << QStringList{u"/a.jpg"_s} << "";
    QTest::newRow("one file, explicit TLS")
        << "ftps" << QStringList() << QStringList{u"a.jpg"_s} << "MIS"
        << "/img" << QStringList{u"/img/a.jpg"_s} << "";
    QTest::newRow("several files, prefix, suffix, stripped")
        << "ftp" << QStringList{u"/img/x"_s} << QStringList{u"my photo.jpg"_s, u"b.png"_s} << "MIS"
        << "/img"
        << QStringList{u"/img/pre-b-post.png"_s, u"/img/pre-my_photo-post.jpg"_s, u"/img/x"_s}
        << "";
    QTest::newRow("several files not allowed")
        << "ftp" << QStringList() << QStringList{u"a.jpg"_s, u"b.png"_s} << "IS"
        << "/" << QStringList() << "Only one file";
    QTest::newRow("collision numbered")
        << "ftp" << QStringList{u"/a.jpg"_s, u"/a_001.jpg"_s} << QStringList{u"a.jpg"_s} << "MIS"
        << "/" << QStringList{u"/a.jpg"_s, u"/a_001.jpg"_s, u"/a_002.jpg"_s} << "";
    QTest::newRow("collision overwritten")
        << "ftp" << QStringList{u"/a.jpg"_s} << QStringList{u"a.jpg"_s} << "MOIS"
        << "/" << QStringList{u"/a.jpg"_s} << "";
    QTest::newRow("collision refused")
        << "ftp" << QStringList{u"/a.jpg"_s} << QStringList{u"a.jpg"_s} << "MS"
        << "/" << QStringList{u"/a.jpg"_s} << "already in /";
    QTest::newRow("leaving the restricted folder")
        << "ftp" << QStringList{u"/site/keep"_s} << QStringList{u"a.jpg"_s} << "MIS"
        << "../outside" << QStringList{u"/site/keep"_s} << "may only go to /site";
}

void tst_ImageUpload::upload()
{
    QFETCH(QString, scheme);
    QFETCH(QStringList, existing);
    QFETCH(QStringList, local);
    QFETCH(QString, settings);
    QFETCH(QString, folder);
    QFETCH(QStringList, expected);
    QFETCH(QString, error);

    FtpServer &server = scheme == QLatin1String("ftps") ? *m_ftps : *m_ftp;
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
        values.FTP_FileNamePrefix = QStringLiteral("pre-");
        values.FTP_FileNameSuffix = QStringLiteral("-post");
    }
    if (existing.value(0).startsWith(QLatin1String("/site"))) {
        values.FTP_RistrictedDirectory = QStringLiteral("/site");
    }
    values.BaseURL = QStringLiteral("http://www.example.com/");
    values.ImageVCDirectory = QStringLiteral("pictures/");
    if (folder != QLatin1String("/") && !folder.startsWith(QLatin1String("..")))
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
        QCOMPARE(record.uploaded.at(0).at(2).toString(),
            QStringLiteral("http://www.example.com/pictures") + remote);
        QCOMPARE(QFile(server.root() + remote).size(), 1000);
    } else {
        QVERIFY2(record.messages().contains(error), qPrintable(record.messages()));
        QCOMPARE(record.uploaded.size(), 0);
    }
    QCOMPARE(server.files(), expected);
}

void tst_ImageUpload::failure_data()
{
    QTest::addColumn<QString>("scheme");
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("trustServer");
    QTest::addColumn<QString>("error");

    QTest::newRow("wrong password")
        << "ftp"
        << "editor"
        << "Wr0ng-Secret" << true << "refused the user name or password";
    QTest::newRow("wrong password over TLS")
        << "ftps"
        << "editor"
        << "Wr0ng-Secret" << true << "refused the user name or password";
    QTest::newRow("unknown certificate")
        << "ftps"
        << "editor"
        << "editor-pass" << false << "certificate could not be verified";
    QTest::newRow("server full") << "ftp"
                                 << "full"
                                 << "full-pass" << true << "no room";
    QTest::newRow("no server") << "closed"
                               << "editor"
                               << "editor-pass" << true << "Cannot connect";
    QTest::newRow("not a server address") << "http"
                                          << "editor"
                                          << "editor-pass" << true << "not supported";
}

void tst_ImageUpload::failure()
{
    QFETCH(QString, scheme);
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(bool, trustServer);
    QFETCH(QString, error);

    FtpServer &server = scheme == QLatin1String("ftps") ? *m_ftps : *m_ftp;
    server.clear();
    ImageUploadValues values = account(server, scheme, user);
    values.FTP_Password = password;
    if (!trustServer)
        values.certificateAuthorities.clear();
    if (scheme == QLatin1String("closed"))
        values.FTP_ServerName = QStringLiteral("127.0.0.1:1");

    UploadFlow flow(values);
    FlowRecord record(flow);
    if (flow.open())
        QTRY_VERIFY_WITH_TIMEOUT(!flow.isBusy(), 30000);
    if (flow.upload({localFile(QStringLiteral("a.jpg"))}))
        QVERIFY(record.finished.wait(30000));
    QCOMPARE(record.uploaded.size(), 0);
    QVERIFY2(record.messages().contains(error), qPrintable(record.messages()));
    QVERIFY(!record.messages().contains(password));
    QCOMPARE(server.files(), QStringList());
}

void tst_ImageUpload::cancelMidTransfer()
{
    m_ftp->clear();
    m_ftp->put(QStringLiteral("/a.jpg"), "the old picture");
    ImageUploadValues values = account(*m_ftp, QStringLiteral("ftp"), QStringLiteral("slow"));
    values.FTP_OverWriteFiles = true;
    UploadFlow flow(values);
    FlowRecord record(flow);
    QVERIFY(flow.upload({localFile(QStringLiteral("a.jpg"), 4 << 20)}));
    QTRY_VERIFY_WITH_TIMEOUT(
        !record.progress.isEmpty() && record.progress.last().at(1).toLongLong() > 100000, 20000);
    flow.cancel();
    QVERIFY(record.finished.wait(20000));
    QCOMPARE(record.finished.at(0).at(0).toBool(), false);
    QCOMPARE(record.uploaded.size(), 0);
    QVERIFY(record.messages().contains(QLatin1String("cancelled")));
    // The overwritten file is still the old one, and nothing partial is left beside it.
    QCOMPARE(m_ftp->files(), QStringList{u"/a.jpg"_s});
    QFile old(m_ftp->root() + QStringLiteral("/a.jpg"));
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), QByteArray("the old picture"));
}

void tst_ImageUpload::serverStopsMidTransfer()
{
    FtpServer server(false);
    UploadFlow flow(account(server, QStringLiteral("ftp"), QStringLiteral("slow")));
    FlowRecord record(flow);
    QVERIFY(flow.upload({localFile(QStringLiteral("big.jpg"), 4 << 20)}));
    QTRY_VERIFY_WITH_TIMEOUT(
        !record.progress.isEmpty() && record.progress.last().at(1).toLongLong() > 100000, 20000);
    server.stop();
    QVERIFY(record.finished.wait(40000));
    QCOMPARE(record.finished.at(0).at(0).toBool(), false);
    QVERIFY2(record.messages().contains(QLatin1String("connection to the server was lost")),
        qPrintable(record.messages()));
}

void tst_ImageUpload::formBrowsesInsideTheRestrictedFolder()
{
    m_ftps->clear();
    m_ftps->put(QStringLiteral("/site/img/2024/old.png"));
    m_ftps->put(QStringLiteral("/outside/secret.txt"));
    ImageUploadValues values = account(*m_ftps, QStringLiteral("ftps"));
    values.FTP_RistrictedDirectory = QStringLiteral("/site");
    values.FTP_InitialDir = QStringLiteral("/site/img");
    values.ImageVCDirectory = QStringLiteral("http://www.example.com/");

    Dialogs::ImageUploadForm form(values);
    auto *folders = form.findChild<QListWidget *>(QStringLiteral("lstFolders"));
    const auto shown = [folders] {
        QStringList names;
        for (int i = 0; i < folders->count(); ++i)
            names << folders->item(i)->text();
        return names;
    };
    QTRY_COMPARE_WITH_TIMEOUT(shown(), (QStringList{u".."_s, u"2024"_s}), 20000);
    QVERIFY(form.enterFolder(QStringLiteral("..")));
    QTRY_COMPARE_WITH_TIMEOUT(form.flow().folder(), QStringLiteral("/site"), 20000);
    QTRY_COMPARE_WITH_TIMEOUT(shown(), QStringList{u"img"_s}, 20000);
    QVERIFY(!form.enterFolder(QStringLiteral("..")));
    QVERIFY(!form.enterFolder(QStringLiteral("/outside")));
    QVERIFY(form.status().contains(QLatin1String("may only go to /site")));
    QVERIFY(form.enterFolder(QStringLiteral("img/2024")));
    QTRY_COMPARE_WITH_TIMEOUT(form.flow().folder(), QStringLiteral("/site/img/2024"), 20000);
    QTRY_VERIFY_WITH_TIMEOUT(!form.flow().isBusy(), 20000);

    form.addFiles({localFile(QStringLiteral("old.png"))});
    QSignalSpy finished(&form.flow(), &UploadFlow::finished);
    QVERIFY(form.startUpload());
    QVERIFY(finished.wait(20000));
    const ImageUploadValues result = form.values();
    QCOMPARE(result.cancelled, false);
    QCOMPARE(result.remotePaths, QStringList{u"/site/img/2024/old_001.png"_s});
    QCOMPARE(result.addresses, QStringList{u"http://www.example.com/img/2024/old_001.png"_s});
    QCOMPARE(m_ftps->files(),
        (QStringList{u"/outside/secret.txt"_s, u"/site/img/2024/old.png"_s,
            u"/site/img/2024/old_001.png"_s}));
}

namespace {

// Answers the upload form like a host's own dialog that only chooses.
class ChoosingDialogs : public EditorDialogs
{
public:
    bool imageUpload(ImageUploadValues &values) override
    {
        seen = values;
        values.files = files;
        values.remoteFolder = folder;
        values.cancelled = false;
        return true;
    }
    ImageUploadValues seen;
    QStringList files;
    QString folder;
};

} // namespace

void tst_ImageUpload::commandUploadsWhatTheDialogChose()
{
    m_ftp->clear();
    QDir(m_ftp->root()).mkpath(QStringLiteral("www/img"));
    Control::Settings settings;
    settings.FTP_ServerName = m_ftp->address(QStringLiteral("ftp"));
    settings.FTP_UserName = QStringLiteral("editor");
    settings.FTP_Password = QStringLiteral("editor-pass");
    settings.FTP_RistrictedDirectory = QStringLiteral("/www");
    settings.FTP_OverWriteFiles = QStringLiteral("TRUE");
    settings.FTP_StripInvalidCharacters = QStringLiteral("false");
    settings.BaseURL = QStringLiteral("http://www.example.com/");
    settings.ImageVCDirectory = QStringLiteral("/");
    ChoosingDialogs dialogs;
    dialogs.files = {localFile(QStringLiteral("x y.gif"))};
    dialogs.folder = QStringLiteral("img");
    VantryTest::RecordingPrompts prompts;

    ImageUploadCommand command({[&]() -> const Control::Settings & { return settings; },
        [&]() -> EditorDialogs & { return dialogs; }, [&]() -> UserPrompts & { return prompts; }});
    QSignalSpy uploaded(&command, &ImageUploadCommand::imageUploaded);
    QSignalSpy finished(&command, &ImageUploadCommand::finished);
    QVERIFY(!command.run());
    QCOMPARE(dialogs.seen.FTP_Password, QStringLiteral("editor-pass"));
    QCOMPARE(dialogs.seen.FTP_OverWriteFiles, true);
    QCOMPARE(dialogs.seen.FTP_StripInvalidCharacters, false);
    QCOMPARE(dialogs.seen.FTP_AllowMultiableFiles, true);
    QVERIFY(finished.wait(20000));
    QCOMPARE(uploaded.size(), 1);
    QCOMPARE(uploaded.at(0).at(1).toString(), QStringLiteral("/www/img/x y.gif"));
    QCOMPARE(
        uploaded.at(0).at(2).toString(), QStringLiteral("http://www.example.com/img/x%20y.gif"));
    QCOMPARE(prompts.shown.size(), 0);

    // A second choice outside the restricted folder is refused and said so.
    dialogs.folder = QStringLiteral("/etc");
    QVERIFY(!command.run());
    QCOMPARE(prompts.shown.size(), 1);
    QVERIFY(prompts.shown.at(0).text.contains(QLatin1String("may only go to /www")));
    QCOMPARE(m_ftp->files(), QStringList{u"/www/img/x y.gif"_s});
}

QTEST_MAIN(tst_ImageUpload)
#include "tst_imageupload.moc"
