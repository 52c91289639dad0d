// Uploading a 50 MB file over loopback: our upload (UploadFlow on libcurl, worker thread,
// temporary name and rename) beside curl's own command line sending the same file to the
// same server, alternating, in the same run.

#include "images/uploadflow.h"
#include "report.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

using namespace VantryBench;

namespace {

constexpr qint64 fileSize = 50LL << 20;
constexpr int rounds = 7;

double timeOurs(const QString &server, const QString &file, QString *error)
{
    Vantry::ImageUploadValues values;
    values.FTP_ServerName = server;
    values.FTP_UserName = QStringLiteral("editor");
    values.FTP_Password = QStringLiteral("editor-pass");
    values.FTP_OverWriteFiles = true;
    Vantry::Images::UploadFlow flow(values);
    QEventLoop loop;
    bool complete = false;
    QObject::connect(&flow, &Vantry::Images::UploadFlow::finished, &loop, [&](bool ok) {
        complete = ok;
        loop.quit();
    });
    QObject::connect(&flow, &Vantry::Images::UploadFlow::failed, &loop,
        [error](const QString &message) { *error = message; });
    QElapsedTimer timer;
    timer.start();
    if (!flow.upload({file}, QStringLiteral("/ours")))
        return 0;
    QTimer::singleShot(120000, &loop, &QEventLoop::quit);
    loop.exec();
    if (!complete && error->isEmpty())
        *error = QStringLiteral("our upload did not finish");
    return double(timer.nsecsElapsed()) / 1e6;
}

double timeCurl(const QString &server, const QString &file, QString *error)
{
    QProcess curl;
    QElapsedTimer timer;
    timer.start();
    curl.start(QStringLiteral("curl"),
        {QStringLiteral("-sS"), QStringLiteral("--user"), QStringLiteral("editor:editor-pass"),
            QStringLiteral("-T"), file, server + QStringLiteral("/raw/")});
    if (!curl.waitForFinished(120000) || curl.exitCode() != 0)
        *error
            = QStringLiteral("curl failed: ") + QString::fromLocal8Bit(curl.readAllStandardError());
    return double(timer.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString root = dir.filePath(QStringLiteral("root"));
    QDir().mkpath(root + QStringLiteral("/ours"));
    QDir().mkpath(root + QStringLiteral("/raw"));
    const QString file = dir.filePath(QStringLiteral("big.jpg"));
    {
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly))
            return 1;
        QByteArray block(1 << 20, '\0');
        for (int i = 0; i < block.size(); ++i)
            block[i] = char(i * 7919 % 251);
        for (qint64 written = 0; written < fileSize; written += block.size())
            out.write(block);
    }

    QProcess server;
    server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const QString portFile = dir.filePath(QStringLiteral("port"));
    server.start(QStringLiteral("/usr/bin/python3"),
        {QStringLiteral(VANTRY_FTP_SERVER_SCRIPT), root, portFile});
    for (int i = 0; i < 200 && !QFile::exists(portFile); ++i)
        QThread::msleep(50);
    QFile port(portFile);
    if (!port.open(QIODevice::ReadOnly)) {
        say(QStringLiteral("the FTP server (python3-pyftpdlib) did not start"));
        return 1;
    }
    const QString address
        = QStringLiteral("ftp://127.0.0.1:") + QString::fromLatin1(port.readAll());

    say(QStringLiteral("upload of a 50 MB file over loopback (%1 rounds each)").arg(rounds));
    QString error;
    timeOurs(address, file, &error); // warm-up, not counted
    timeCurl(address, file, &error);
    Samples ours, raw;
    for (int round = 0; round < rounds && error.isEmpty(); ++round) {
        if (round % 2) {
            raw.add(timeCurl(address, file, &error));
            ours.add(timeOurs(address, file, &error));
        } else {
            ours.add(timeOurs(address, file, &error));
            raw.add(timeCurl(address, file, &error));
        }
    }
    server.kill();
    server.waitForFinished();

    Report report;
    ResultRow row{QStringLiteral("upload 50 MB over loopback FTP"), ours.median(), raw.median(),
        ResultRow::Target::Ratio, 1.5, !error.isEmpty(), error};
    row.spread(ours, raw);
    if (error.isEmpty())
        row.note = QStringLiteral("baseline: the curl command line; %1 MB/s ours, %2 MB/s curl")
                       .arg(50000.0 / row.ours, 0, 'f', 0)
                       .arg(50000.0 / row.baseline, 0, 'f', 0);
    report.add(row);
    report.print();
    return row.failed ? 1 : 0;
}
