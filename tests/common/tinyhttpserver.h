#pragma once

#include <QHash>
#include <QHostAddress>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

namespace VantryTest {

// Answers GET requests on 127.0.0.1 from a table of paths (anything else is a 404), keeps
// paths it was told to leave unanswered hanging, and logs every request and connection.
class TinyHttpServer : public QObject
{
public:
    struct Response
    {
        QByteArray contentType = "text/html";
        QByteArray body;
    };

    bool start()
    {
        connect(&m_server, &QTcpServer::newConnection, this, &TinyHttpServer::accept);
        return m_server.listen(QHostAddress::LocalHost, 0);
    }

    QString url(const QString &path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path);
    }

    void serve(const QString &path, const Response &response)
    {
        m_responses.insert(path, response);
    }
    // Requests for path are read and never answered.
    void hang(const QString &path) { m_hanging.insert(path); }

    // The path of every request, in order of arrival.
    QStringList requests;
    int connections = 0;

private:
    void accept()
    {
        while (QTcpSocket *socket = m_server.nextPendingConnection()) {
            ++connections;
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { respond(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    }

    void respond(QTcpSocket *socket)
    {
        QByteArray request = socket->property("request").toByteArray() + socket->readAll();
        socket->setProperty("request", request);
        if (!request.contains("\r\n\r\n"))
            return;
        const QList<QByteArray> line = request.left(request.indexOf("\r\n")).split(' ');
        const QString path = QString::fromLatin1(line.value(1));
        requests.append(path);
        if (m_hanging.contains(path))
            return;
        const auto found = m_responses.constFind(path);
        const QByteArray status = found != m_responses.constEnd() ? "200 OK" : "404 Not Found";
        const Response response
            = found != m_responses.constEnd() ? *found : Response{"text/html", "<p>not here</p>"};
        socket->write("HTTP/1.1 " + status + "\r\nContent-Type: " + response.contentType
            + "\r\nContent-Length: " + QByteArray::number(response.body.size())
            + "\r\nConnection: close\r\n\r\n" + response.body);
        socket->disconnectFromHost();
    }

    QTcpServer m_server;
    QHash<QString, Response> m_responses;
    QSet<QString> m_hanging;
};

} // namespace VantryTest
