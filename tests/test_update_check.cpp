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

    VersionServer(Mode mode, int status = 200, QByteArray body = {}) {
        QObject::connect(&m_server, &QTcpServer::newConnection, [this, mode, status, body] {
            while (QTcpSocket* socket = m_server.nextPendingConnection())
                QObject::connect(socket, &QTcpSocket::readyRead, socket, [=, this] {
                    m_request += socket->readAll();
                    if (!m_request.contains("\r\n\r\n"))
                        return;
                    requestLine = m_request.left(m_request.indexOf("\r\n"));
                    if (mode == HangUp)
                        socket->abort();
                    else if (mode == Answer) {
                        socket->write("HTTP/1.1 " + QByteArray::number(status) +
                                      " Status\r\nContent-Length: " + QByteArray::number(body.size()) +
                                      "\r\nConnection: close\r\n\r\n" + body);
                        socket->disconnectFromHost();
                    }
                });
        });
        m_server.listen(QHostAddress::LocalHost);
    }
    QString Url() const {
        return QStringLiteral("http://127.0.0.1:%1/fns/genfns.php").arg(m_server.serverPort());
    }
    QByteArray requestLine;

private:
    QTcpServer m_server;
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
    // The running version ordered as a text against "10.0.0" and the download page opened on Yes are walked
    // by the help menu's scenario.
    const QString current = Version_Text();
    const QString same = "You are running the most recent version (ver. " + current + ") of HalvenorTS!";
    const QString newer =
        "A new version (ver. 9.0.0) is available for download. Do you want to download the new "
        "version?";
    const QString unable = QStringLiteral("Unable to get update information at this time! Try again later.");
    constexpr auto Info = MsgStyle::Information;
    const struct {
        const char* what;
        int status;
        QByteArray body;
        std::optional<MsgAnswer> answer; // for the download question
        MsgStyle style;
        MsgButtons buttons;
        QString text;
        bool downloads;
    } cases[] = {
        // clang-format off
        {"not found", 404, "9.0.0", {}, MsgStyle::Exclamation, MsgButtons::OK, unable, false},
        {"same version", 200, current.toUtf8(), {}, Info, MsgButtons::OK, same, false},
        {"empty body", 200, "", {}, Info, MsgButtons::OK, same, false},
        {"newer, downloaded", 200, "9.0.0", MsgAnswer::Yes, Info, MsgButtons::YesNo, newer, true},
        {"newer, declined", 200, "9.0.0", MsgAnswer::No, Info, MsgButtons::YesNo, newer, false},
    }; // clang-format on
    for (const auto& c : cases) {
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
}

TEST_F(UpdateCheck, NoAnswerIsARunTimeErrorAndNoMessage) {
    {
        VersionServer server(VersionServer::Silent);
        EXPECT_EQ(Raised([&] { Check_Updates(server.Url(), kShortTimeoutMs); }), -2147012894);
        EXPECT_EQ(Err().Description, QStringLiteral("The operation timed out"));
        EXPECT_FALSE(server.requestLine.isEmpty());
    }
    VersionServer server(VersionServer::HangUp);
    EXPECT_EQ(Raised([&] { Check_Updates(server.Url(), kShortTimeoutMs * 10); }), -2146697211);
    EXPECT_EQ(Err().Description, QStringLiteral("The system cannot locate the resource specified."));
    EXPECT_TRUE(world.boxes.empty());
}

} // namespace
