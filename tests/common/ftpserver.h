#pragma once

#include "files.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

// Tests that include this define VANTRY_FTP_SERVER_SCRIPT (tests/images/ftpserver.py) and
// VANTRY_SFTP_SERVER_SCRIPT (tests/images/sftpserver.py).
namespace VantryTest {

using namespace Qt::StringLiterals;

inline const QString python = u"/usr/bin/python3"_s;

// pyftpdlib (python3-asyncssh for SFTP) on 127.0.0.1, serving a temporary folder; stopped
// with the object.
class FtpServer
{
public:
    enum Protocol
    {
        Ftp,
        Ftps,
        Sftp
    };
    explicit FtpServer(Protocol protocol)
        : m_sftp(protocol == Sftp)
    {
        QStringList arguments{
            QStringLiteral(VANTRY_FTP_SERVER_SCRIPT), root(), m_dir.filePath(u"port"_s)};
        if (m_sftp)
            arguments = QStringList{QStringLiteral(VANTRY_SFTP_SERVER_SCRIPT), root(),
                m_dir.filePath(u"port"_s), certificate()};
        if (protocol == Ftps) {
            QProcess openssl;
            openssl.start(u"openssl"_s,
                u"req -x509 -newkey rsa:2048 -nodes -days 1 -subj /CN=localhost -addext "
                "subjectAltName=IP:127.0.0.1 -out"_s.split(u' ')
                    << certificate() << u"-keyout"_s << m_dir.filePath(u"key.pem"_s));
            if (!openssl.waitForFinished(60000) || openssl.exitCode() != 0)
                qFatal("openssl could not make a certificate");
            arguments << certificate() << m_dir.filePath(u"key.pem"_s);
        }
        QDir(m_dir.path()).mkdir(u"root"_s);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(python, arguments);
        QFile portFile(m_dir.filePath(u"port"_s));
        for (int i = 0; i < 200 && !portFile.exists(); ++i)
            QTest::qWait(50);
        if (!portFile.open(QIODevice::ReadOnly))
            qFatal("the test server (python3-pyftpdlib, python3-asyncssh) did not start");
        m_port = portFile.readAll().toInt();
    }
    ~FtpServer() { stop(); }

    void stop()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    QString root() const { return m_dir.filePath(u"root"_s); }
    // What a client verifies the server with: the certificate of an FTPS server, the
    // known_hosts file of an SFTP server.
    QString certificate() const
    {
        return m_dir.filePath(m_sftp ? u"known_hosts"_s : u"cert.pem"_s);
    }
    QString address(const QString &scheme) const
    {
        return scheme + u"://127.0.0.1:"_s + QString::number(m_port);
    }
    // The files below the root, as "/a/b.jpg", sorted.
    QStringList files() const
    {
        QStringList found;
        QDirIterator it(root(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext())
            found << it.next().mid(root().size());
        found.sort();
        return found;
    }
    void put(const QString &path, const QByteArray &content = "old")
    {
        QVERIFY(writeFile(root() + path, content));
    }
    void clear()
    {
        QDir(root()).removeRecursively();
        QDir(m_dir.path()).mkdir(u"root"_s);
    }

private:
    QTemporaryDir m_dir;
    QProcess m_process;
    bool m_sftp = false;
    int m_port = 0;
};

} // namespace VantryTest
