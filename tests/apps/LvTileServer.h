#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QHash>
#include <QHostAddress>
#include <QImage>
#include <QObject>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <functional>

/// A web server on this machine that answers what a test wants, and remembers what it was asked for.
class LvTileServer
{
public:
    struct Answer {
        int status = 200;
        QByteArray body;
        QByteArray headers; // whole lines
        bool isLate = false; // only with answerLate()
    };

    explicit LvTileServer(const std::function<Answer(const QString& path)>& answer)
        : myAnswer(answer)
    {
        QObject::connect(&myServer, &QTcpServer::newConnection, &myServer, [this] { accept(); });
        myServer.listen(QHostAddress::LocalHost);
    }

    /// A server of tiles in one colour.
    explicit LvTileServer(const QColor& color)
        : LvTileServer([tile = tileOf(color)](const QString&) {
            return Answer{200, tile, {}, false};
        })
    {
    }

    Q_DISABLE_COPY_MOVE(LvTileServer)
    ~LvTileServer() = default;

    static QByteArray tileOf(const QColor& color, int side = 256)
    {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(color);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.save(&buffer, "PNG");
        return bytes;
    }

    QString address(const QString& path = QStringLiteral("/{z}/{x}/{y}.png")) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(myServer.serverPort()).arg(path);
    }

    void close() { myServer.close(); }

    /// Paths of all requests, in their order.
    QStringList paths() const { return myPaths; }

    /// The head of the last request.
    QByteArray lastHead() const { return myLastHead; }

    /// The largest number of requests that waited for an answer at once.
    int mostAtOnce() const { return myMostAtOnce; }

    /// Sends the answers that are late.
    void answerLate()
    {
        const QList<std::function<void()>> answers = std::exchange(myLateAnswers, {});
        for (const std::function<void()>& answer : answers) {
            answer();
        }
    }

private:
    void accept()
    {
        while (QTcpSocket* socket = myServer.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { read(socket); });
        }
    }

    void read(QTcpSocket* socket)
    {
        QByteArray& head = myHeads[socket];
        head += socket->readAll();
        const qsizetype end = head.indexOf("\r\n\r\n");
        if (end < 0) {
            return;
        }
        myLastHead = head.left(end);
        head.remove(0, end + 4);
        const QString path = QString::fromUtf8(myLastHead.split(' ').value(1));
        myPaths.append(path);
        myOpen += 1;
        myMostAtOnce = std::max(myMostAtOnce, myOpen);
        const Answer answer = myAnswer(path);
        const auto send = [this, socket, answer] {
            myOpen -= 1;
            socket->write("HTTP/1.1 " + QByteArray::number(answer.status)
                          + " Text\r\nContent-Length: " + QByteArray::number(answer.body.size()) + "\r\n"
                          + answer.headers + "\r\n" + answer.body);
        };
        if (answer.isLate) {
            myLateAnswers.append(send);
        } else {
            send();
        }
    }

    QTcpServer myServer;
    std::function<Answer(const QString&)> myAnswer;
    QHash<QTcpSocket*, QByteArray> myHeads;
    QList<std::function<void()>> myLateAnswers;
    QStringList myPaths;
    QByteArray myLastHead;
    int myOpen = 0;
    int myMostAtOnce = 0;
};
