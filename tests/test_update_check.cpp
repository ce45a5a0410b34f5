// The update check against a small HTTP server of the test's own on the loopback address, through the
// desktop's real network code: what the server says decides the message, and no answer is an error.
#include "console/modUpdate.h"
#include "core/Version.h"
#include "platform/qt/NetworkGet.h"
#include "testing/ScriptedPlatform.h"
#include "testing/TestSupport.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <gtest/gtest.h>

namespace {

using namespace hv;
using hv::testing::Raised;

// A one-page web server: it answers every request with one status and body, or keeps silent, or hangs up.
class VersionServer final {
public:
    enum Mode { Answer, Silent, HangUp };

    VersionServer(Mode mode, int status = 200, QByteArray body = {})
        : m_mode(mode), m_status(status), m_body(std::move(body)) {
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] { Accept(); });
        m_server.listen(QHostAddress::LocalHost);
    }
    QString Url() const {
        return QStringLiteral("http://127.0.0.1:%1/fns/genfns.php").arg(m_server.serverPort());
    }
    QByteArray requestLine;

private:
    void Accept() {
        while (QTcpSocket* socket = m_server.nextPendingConnection())
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { Read(socket); });
    }
    void Read(QTcpSocket* socket) {
        m_request += socket->readAll();
        if (!m_request.contains("\r\n\r\n"))
            return;
        requestLine = m_request.left(m_request.indexOf("\r\n"));
        if (m_mode == Silent)
            return;
        if (m_mode == HangUp) {
            socket->abort();
            return;
        }
        socket->write("HTTP/1.1 " + QByteArray::number(m_status) + " Status\r\nContent-Length: " +
                      QByteArray::number(m_body.size()) + "\r\nConnection: close\r\n\r\n" + m_body);
        socket->disconnectFromHost();
    }

    QTcpServer m_server;
    Mode m_mode;
    int m_status;
    QByteArray m_body;
    QByteArray m_request;
};

constexpr int kShortTimeoutMs = 400;

class UpdateCheck : public ::testing::Test {
protected:
    UpdateCheck() { world.httpNetwork = &Network_Get; }
    void TearDown() override { Err().Clear(); }
    ScriptedPlatform world;
    PlatformScope scope{world};
};

TEST_F(UpdateCheck, TheServersAnswerDecidesTheMessage) {
    const QString current = Version_Text();
    const QString mostRecent = QStringLiteral("You are running the most recent version (ver. ") + current +
                               QStringLiteral(") of HalvenorTS!");
    struct Case {
        const char* what;
        int status;
        QByteArray body;
        std::optional<MsgAnswer> answer; // for the download question
        MsgStyle style;
        MsgButtons buttons;
        QString text;
        bool downloads;
    };
    const QString newer = QStringLiteral(
        "A new version (ver. 9.0.0) is available for download. Do you want to download the new version?");
    const QString unable = QStringLiteral("Unable to get update information at this time! Try again later.");
    constexpr auto Info = MsgStyle::Information;
    // clang-format off
    const Case cases[] = {
        {"not found", 404, "9.0.0", {}, MsgStyle::Exclamation, MsgButtons::OK, unable, false},
        {"same version", 200, current.toUtf8(), {}, Info, MsgButtons::OK, mostRecent, false},
        {"empty body", 200, "", {}, Info, MsgButtons::OK, mostRecent, false},
        // Compared as texts: "10.0.0" comes before "3.x.y", and the running version is the one named.
        {"higher number, lower text", 200, "10.0.0", {}, Info, MsgButtons::OK, mostRecent, false},
        {"newer, downloaded", 200, "9.0.0", MsgAnswer::Yes, Info, MsgButtons::YesNo, newer, true},
        {"newer, declined", 200, "9.0.0", MsgAnswer::No, Info, MsgButtons::YesNo, newer, false},
    };
    // clang-format on
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        world.boxes.clear();
        world.launched.clear();
        if (c.answer)
            world.answers = {*c.answer};
        VersionServer server(VersionServer::Answer, c.status, c.body);
        EXPECT_EQ(Raised([&] { Check_Updates(server.Url(), kShortTimeoutMs * 10); }), 0);
        EXPECT_EQ(server.requestLine,
                  "GET /fns/genfns.php?fn=getver&pn=hvts&pv=" + current.toUtf8() + " HTTP/1.1");
        ASSERT_EQ(world.boxes.size(), 1u);
        EXPECT_EQ(world.boxes[0].text, c.text);
        EXPECT_EQ(world.boxes[0].style, c.style);
        EXPECT_EQ(world.boxes[0].buttons, c.buttons);
        EXPECT_EQ(world.launched, c.downloads ? QStringList{Download_Url()} : QStringList{});
    }
    EXPECT_TRUE(world.failure.isEmpty()) << world.failure.toStdString();
    EXPECT_EQ(Download_Url(),
              Home_Site_Url() + QStringLiteral("/halvenor-terminal-server/halvenorts-download.html?sr=hvts"));
}

TEST_F(UpdateCheck, NoAnswerIsARunTimeErrorAndNoMessage) {
    {
        VersionServer server(VersionServer::Silent);
        EXPECT_EQ(Raised([&] { Check_Updates(server.Url(), kShortTimeoutMs); }), -2147012894);
        EXPECT_EQ(Err().Description, QStringLiteral("The operation timed out"));
        EXPECT_FALSE(server.requestLine.isEmpty());
    }
    {
        VersionServer server(VersionServer::HangUp);
        EXPECT_EQ(Raised([&] { Check_Updates(server.Url(), kShortTimeoutMs * 10); }), -2146697211);
        EXPECT_EQ(Err().Description, QStringLiteral("The system cannot locate the resource specified."));
    }
    EXPECT_TRUE(world.boxes.empty());
}

TEST_F(UpdateCheck, TheQueryIsJoinedOnlyWhenThereIsOne) {
    VersionServer server(VersionServer::Answer, 200, "body");
    QString reply = QStringLiteral("old");
    EXPECT_EQ(Http_Get(server.Url(), QString(), reply, kShortTimeoutMs * 10), QStringLiteral("True"));
    EXPECT_EQ(server.requestLine, "GET /fns/genfns.php HTTP/1.1");
    EXPECT_EQ(reply, QStringLiteral("body"));

    VersionServer missing(VersionServer::Answer, 500, "oops");
    EXPECT_EQ(Http_Get(missing.Url(), QStringLiteral("a=1"), reply, kShortTimeoutMs * 10),
              QStringLiteral("False"));
    EXPECT_EQ(missing.requestLine, "GET /fns/genfns.php?a=1 HTTP/1.1");
    EXPECT_TRUE(reply.isEmpty());
}

} // namespace
