#include "signin/GoogleAuthorization.h"
#include "platform/CancellationError.h"
#include "platform/SystemRandom.h"
#include "platform/URLError.h"
#include "tests/support/FixedRandom.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QUrlQuery>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QDateTime beginning = QDateTime::fromMSecsSinceEpoch(1'800'000'000'000, Qt::UTC);
const auto goodCode = QString(64, u'a').replace(0, 16, u"0123456789abcdef"_s);

/// The published example of a proof key.
class ExampleRandom final : public RandomSource {
public:
    std::optional<QByteArray> bytes(qsizetype) override {
        return QByteArray::fromBase64("dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk",
                                      QByteArray::Base64UrlEncoding);
    }
};

/// The code, or the name of the failure.
QString outcome(const GoogleAuthorization &authorization, const QString &callback, qint64 age) {
    try {
        return authorization.code(callback, beginning.addMSecs(age));
    } catch (const URLError &error) {
        return URLError::name(error.code());
    } catch (const CancellationError &) {
        return u"cancelled"_s;
    }
}

} // namespace

TEST(GoogleAuthorization, theSecretsAreLongUnlikeAndFitForAddresses) {
    SystemRandom random;
    QSet<QByteArray> texts;
    for (int attempt = 0; attempt < 100; ++attempt) {
        const GoogleAuthorization authorization(random, beginning);
        for (const auto &text : {authorization.verifier(), authorization.state()}) {
            EXPECT_EQ(text.size(), 43);
            for (const char c : {'+', '/', '='})
                EXPECT_FALSE(text.contains(c));
            texts.insert(text);
        }
    }
    EXPECT_EQ(texts.size(), 200);
    EXPECT_EQ(GoogleAuthorization::base64URL("\xfb\xff\xfe\xff"), "-__-_w");

    FixedRandom none;
    none.exhaust();
    try {
        const GoogleAuthorization authorization(none, beginning);
        FAIL() << "made of nothing";
    } catch (const URLError &error) {
        EXPECT_EQ(error.code(), URLError::Code::cannotCreateFile);
    }
}

TEST(GoogleAuthorization, theStartPageLearnsTheHashAndTheTokenRequestTellsTheVerifier) {
    ExampleRandom random;
    const GoogleAuthorization authorization(random, beginning);
    const auto origin = GoogleAuthorization::accountOrigin();
    EXPECT_EQ(authorization.startURL(u"zh-Hant"_s).toString(QUrl::FullyEncoded),
              origin + u"/google/native/start?client=macos"
                       "&code_challenge=E9Melhoa2OwvFrEMTJguCHaoeK1t8URWbuGJSstw-cM"
                       "&code_challenge_method=S256"
                       "&state=dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk&lang=zh-Hant"_s);

    const auto request = authorization.tokenRequest(goodCode);
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url, QUrl(origin + u"/google/native/token"_s));
    EXPECT_EQ(request.timeout, std::chrono::seconds(30));
    using Headers = std::vector<std::pair<QByteArray, QByteArray>>;
    EXPECT_EQ(request.headers, (Headers{{"Content-Type", "application/json"}}));
    EXPECT_EQ(QJsonDocument::fromJson(*request.body).object(),
              (QJsonObject{{u"client"_s, u"macos"_s},
                           {u"code"_s, goodCode},
                           {u"code_verifier"_s, QString::fromLatin1(authorization.verifier())}}));
}

TEST(GoogleAuthorization, aCallbackIsJudgedInOrder) {
    FixedRandom random;
    const GoogleAuthorization authorization(random, beginning);
    const auto address = u"quillmere-mac://auth/google"_s;
    const auto state = u"state="_s + QString::fromLatin1(authorization.state());
    const auto code = u"code="_s + goodCode;
    const auto good = address + u'?' + state + u'&' + code;
    const auto bad = u"badServerResponse"_s;
    const auto withState = address + u'?' + state;
    const struct {
        QString callback;
        QString outcome;
        qint64 age = 1000;
    } cases[] = {
        {good, goodCode},
        {address + u'?' + code + u'&' + state, goodCode},
        {good, goodCode, 899'900},
        {good, u"timedOut"_s, 900'000},
        {good, u"timedOut"_s, -1},
        {u"https://auth/google"_s, u"timedOut"_s, 900'000},
        {u"https://auth/google?"_s + state + u'&' + code, u"badURL"_s},
        {u"Quillmere-mac://auth/google?"_s + state + u'&' + code, u"badURL"_s},
        {u"quillmere-mac://Auth/google?"_s + state + u'&' + code, u"badURL"_s},
        {u"quillmere-mac://auth/google/?"_s + state + u'&' + code, u"badURL"_s},
        {u"quillmere-mac://auth:80/google?"_s + state + u'&' + code, u"badURL"_s},
        {u"quillmere-mac://me@auth/google?"_s + state + u'&' + code, u"badURL"_s},
        {good + u"#part"_s, u"badURL"_s},
        {good + u"&error=a b"_s, u"badURL"_s},
        {address, bad},
        {good + u"&lang=en"_s, bad},
        {withState + u"&error=access_denied&lang=en"_s, bad},
        {address + u'?' + code, bad},
        {good + u'&' + state, bad},
        {address + u'?' + state.left(49) + u"x&"_s + code, bad},
        {address + u"?state=x&error=access_denied"_s, bad},
        {withState + u"&error=access_denied"_s, u"cancelled"_s},
        {good + u"&error=access_denied"_s, u"cancelled"_s},
        {good + u"&error=access_denied&error=access_denied"_s, bad},
        {good + u"&error=server_error"_s, bad},
        {good + u'&' + code, bad},
        {withState + u"&code"_s, bad},
        {withState + u"&code="_s + goodCode.toUpper(), bad},
        {withState + u"&code="_s + goodCode.left(63), bad},
        {good + u'0', bad},
        {withState + u"&code="_s + goodCode.left(63) + u"%00"_s, bad},
    };
    for (const auto &one : cases) {
        EXPECT_EQ(outcome(authorization, one.callback, one.age), one.outcome)
            << qPrintable(one.callback) << " after " << one.age << " ms";
    }
}
