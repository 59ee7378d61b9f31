#include "tests/store/AccountTest.h"

#include "storage/ProfileCache.h"
#include "storage/TokenVault.h"
#include "tests/store/SampleCatalogue.h"

#include <algorithm>

AccountTest::AccountTest() {
    auto &transport = system.transport;
    transport.always(path(Endpoint::health), HttpResponse{200, SampleCatalogue::healthBody()});
    transport.always(path(Endpoint::archives), HttpResponse{200, SampleCatalogue::archivesBody()});
    transport.always(path(Endpoint::wall), HttpResponse{200, R"({"items":[]})"});
    transport.always(path(Endpoint::quota),
                     HttpResponse{200, R"({"plan":"free","used":1,"limit":5})"});
    transport.always(path(Endpoint::logout), HttpResponse{200, "{}"});
}

QByteArray AccountTest::accountBody(const QString &user, const QString &plan) {
    Account account;
    account.user.id = user;
    account.user.handle = user;
    account.plan = plan;
    return Json::encode(account);
}

QByteArray AccountTest::loginBody(const QString &user) {
    Login login;
    login.token = QString::fromUtf8(tokenOf(user));
    login.user.id = user;
    return Json::encode(login);
}

qsizetype AccountTest::sent(QLatin1String endpoint) const {
    const auto &requests = system.transport.requests();
    return std::count_if(requests.begin(), requests.end(), [&](const HttpRequest &request) {
        return request.url.path() == path(endpoint);
    });
}

QByteArray AccountTest::token(const QString &server) {
    return system.credentials.secrets().value({TokenVault::service(), server});
}

void AccountTest::signIn(const QString &user) {
    auto signingIn = store.login(user, QStringLiteral("secret"));
    answer(Endpoint::login, 200, loginBody(user));
    await(std::move(signingIn));
    settleEventLoop();
    ASSERT_EQ(this->user(), user);
}

void AccountTest::leaveLogin(const QString &server, const QString &user, bool withProfile) {
    system.credentials.secrets()[{TokenVault::service(), server}] = tokenOf(user);
    if (withProfile)
        ProfileCache::put(system.files, Json::decode<Account>(accountBody(user)), server,
                          QString::fromUtf8(tokenOf(user)));
}
