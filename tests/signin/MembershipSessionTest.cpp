#include "signin/MembershipSession.h"
#include "signin/GoogleAuthorization.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(MembershipSession, onlyTheOneFormOfAddressOpens) {
    const auto origin = GoogleAuthorization::accountOrigin();
    const auto host = QUrl(origin).host();
    const auto path = u"/google/native/web-session"_s;
    const auto code = QString(64, u'0').replace(0, 3, u"a9f"_s);
    const auto good = origin + path + u"?code="_s + code;
    EXPECT_EQ(MembershipSession::validURL(good), QUrl(good));
    EXPECT_EQ(MembershipSession::validURL(good)->toString(), good);

    const auto at = [&](const QString &authority) {
        return u"https://"_s + authority + path + u"?code="_s + code;
    };
    for (const auto &address : {
             u""_s,
             u"http://"_s + host + path + u"?code="_s + code,
             u"HTTPS://"_s + host + path + u"?code="_s + code,
             at(host.toUpper()),
             at(host + u".example.com"_s),
             at(host + u":443"_s),
             at(u"me@"_s + host),
             at(host + u"@example.com"_s),
             origin + path + u"/?code="_s + code,
             origin + path + u"?token="_s + code,
             origin + u"/google/native/start?code="_s + code,
             good + u"&lang=en"_s,
             good + u"#part"_s,
             good.left(good.size() - 1),
             good + u'0',
             origin + path + u"?code="_s + code.toUpper(),
             good + u'\n',
         })
        EXPECT_EQ(MembershipSession::validURL(address), std::nullopt) << qPrintable(address);
}
