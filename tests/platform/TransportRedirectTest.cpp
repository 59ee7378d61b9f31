#include "tests/platform/TransportTest.h"

using namespace Qt::StringLiterals;

namespace {

using TransportRedirect = TransportTest;

QString step(int number) {
    return u"/step/%1"_s.arg(number);
}

} // namespace

TEST_F(TransportRedirect, aGetFollowsInsideItsOriginWithItsHeaders) {
    int steps = 0;
    for (const int status : {301, 302, 303, 307, 308}) {
        service.expect("GET", step(steps),
                       ScriptedAnswer::redirect(status, step(steps + 1).toLatin1()));
        ++steps;
    }
    service.expect("GET", step(steps), ScriptedAnswer::reply(200, "there"));

    const auto response = this->response(withToken(getPath(step(0))));
    EXPECT_EQ(response.status, 200);
    EXPECT_EQ(response.body, "there");
    for (const auto &request : service.requests())
        EXPECT_EQ(request.values("Authorization"), QList<QByteArray>{"Bearer secret"});
}

TEST_F(TransportRedirect, theSixthRedirectIsTheReply) {
    for (int number = 0; number < 6; ++number)
        service.expect("GET", step(number),
                       ScriptedAnswer::redirect(302, step(number + 1).toLatin1()));
    EXPECT_EQ(ending(getPath(step(0))), "302");
    EXPECT_EQ(service.requests().size(), 6U);
}

TEST_F(TransportRedirect, relativeAndWholeTargetsAreResolved) {
    const QList<std::pair<QByteArray, QByteArray>> targets = {
        {"next?a=b%20c", "/v1/next?a=b%20c"},
        {"../top", "/top"},
        {"//127.0.0.1:" + QByteArray::number(QUrl(service.base()).port()) + "/same", "/same"},
        {service.base().toLatin1() + "/whole", "/whole"},
    };
    for (const auto &[location, target] : targets) {
        SCOPED_TRACE(location.constData());
        service.expect("GET", u"/v1/start"_s, ScriptedAnswer::redirect(302, location));
        service.expect("GET", QUrl::fromEncoded(target).path(), ScriptedAnswer::reply(200));
        EXPECT_EQ(ending(getPath(u"/v1/start"_s)), "200");
        EXPECT_EQ(service.requests().back().target, target);
    }
}

TEST_F(TransportRedirect, anotherOriginIsNeverVisited) {
    // Strict: a request that reached it would fail the test.
    const ScriptedService other;
    const QList<QString> targets = {
        other.base() + u"/port"_s,
        service.base(u"localhost"_s) + u"/host"_s,
        QString(service.base()).replace(u"http:"_s, u"https:"_s) + u"/scheme"_s,
        u"file:///etc/hostname"_s,
        u"data:,text"_s,
    };
    for (const auto &target : targets) {
        for (const int status : {301, 302, 303, 307, 308}) {
            SCOPED_TRACE(target.toStdString() + " " + std::to_string(status));
            service.expect("GET", u"/away"_s, ScriptedAnswer::redirect(status, target.toLatin1()));
            const auto response = this->response(withToken(getPath(u"/away"_s)));
            EXPECT_EQ(response.status, status);
            EXPECT_EQ(response.body, "{}");
        }
    }
    EXPECT_TRUE(other.requests().empty());
}

TEST_F(TransportRedirect, aPostIsNeverSentOn) {
    for (const int status : {301, 302, 303, 307, 308}) {
        for (const auto way : {Way::whole, Way::streamed}) {
            service.expect("POST", u"/run"_s, ScriptedAnswer::redirect(status, "/elsewhere"));
            const auto reading = read(way, withToken(postPath(u"/run"_s)));
            EXPECT_EQ(reading.status, status);
            EXPECT_EQ(reading.bytes, "{}");
        }
    }
    EXPECT_EQ(service.requests().size(), 10U);
}

TEST_F(TransportRedirect, oneWithoutTargetIsTheReply) {
    for (const int status : {300, 302, 304}) {
        service.expect("GET", u"/nowhere"_s, ScriptedAnswer::reply(status));
        EXPECT_EQ(ending(getPath(u"/nowhere"_s)), std::to_string(status));
    }
}
