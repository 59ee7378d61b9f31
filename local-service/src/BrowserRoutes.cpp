#include "BrowserRoutes.h"

#include "FormPage.h"
#include "PageWords.h"
#include "Router.h"
#include "SignIn.h"
#include "SignInCodes.h"

#include "records/JsonDecoder.h"

#include <QUrl>
#include <QUrlQuery>

#include <algorithm>

namespace {

struct CodeExchange {
    QString client;
    QString code;
    QString verifier;
};

} // namespace

template <>
struct JsonFields<CodeExchange> {
    static constexpr auto table = std::make_tuple(
        jsonField("client", &CodeExchange::client), jsonField("code", &CodeExchange::code),
        jsonField("code_verifier", &CodeExchange::verifier));
};

namespace {

const auto startPath = QStringLiteral("/google/native/start");
const auto client = QStringLiteral("macos");
const auto method = QStringLiteral("S256");
/// 32 bytes in unpadded base64.
constexpr qsizetype challengeLength = 43;
constexpr qsizetype longestState = 200;

/// What the program asked for. It travels through the page and back.
struct Attempt {
    QString challenge;
    QString state;
};

bool isUrlBase64(const QString &text) {
    return std::all_of(text.begin(), text.end(), [](QChar letter) {
        const auto c = letter.unicode();
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '-' || c == '_';
    });
}

Attempt readAttempt(const Call &call) {
    Attempt attempt{call.parameter("code_challenge"), call.parameter("state")};
    if (call.parameter("client") != client)
        throw RequestError::badParameter(QStringLiteral("client"), client);
    if (call.parameter("code_challenge_method") != method)
        throw RequestError::badParameter(QStringLiteral("code_challenge_method"), method);
    if (attempt.challenge.size() != challengeLength || !isUrlBase64(attempt.challenge))
        throw RequestError::badParameter(
            QStringLiteral("code_challenge"),
            QStringLiteral("%1 characters of URL-safe base64").arg(challengeLength));
    if (attempt.state.isEmpty() || attempt.state.size() > longestState ||
        !isUrlBase64(attempt.state))
        throw RequestError::badParameter(
            QStringLiteral("state"),
            QStringLiteral("1 to %1 characters of URL-safe base64").arg(longestState));
    return attempt;
}

void showForm(Call &call, int status, const Attempt &attempt, const QString &errorCode) {
    const auto &words = PageWords::of(call.parameter("lang"));
    const QString body =
        FormPage::paragraph(words.signInText) + FormPage::problem(words.problems.value(errorCode)) +
        QStringLiteral("<form method=\"post\" action=\"%1\">\n").arg(startPath) +
        FormPage::hiddenField("client", client) +
        FormPage::hiddenField("code_challenge", attempt.challenge) +
        FormPage::hiddenField("code_challenge_method", method) +
        FormPage::hiddenField("state", attempt.state) + FormPage::hiddenField("lang", words.code) +
        FormPage::nameField(words, call.parameter("handle")) +
        FormPage::passwordField("password", words.password, "current-password",
                                words.passwordRule) +
        FormPage::button(words.signIn, "class=\"main\" name=\"choice\" value=\"sign-in\"") +
        FormPage::button(words.createAndSignIn, "name=\"choice\" value=\"create\"") +
        FormPage::button(words.decline, "name=\"choice\" value=\"decline\" formnovalidate") +
        QStringLiteral("</form>\n");
    // The answer to the form leads on to the program, which a browser counts as a target as well.
    call.replyForm(status, FormPage::html(words, words.signInTitle, body), FormPage::style(),
                   "'self' quillmere-mac:");
}

/// Leads back into the program.
void redirect(Call &call, const Attempt &attempt, const QString &name, const QString &value) {
    QUrl target(QStringLiteral("quillmere-mac://auth/google"));
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("state"), attempt.state);
    query.addQueryItem(name, value);
    target.setQuery(query);
    call.redirect(target.toEncoded());
}

void takeForm(Call &call, SignIn &signIn, SignInCodes &codes, qint64 now) {
    const auto attempt = readAttempt(call);
    const auto choice = call.parameter("choice");
    if (choice == QLatin1String("decline")) {
        redirect(call, attempt, QStringLiteral("error"), QStringLiteral("access_denied"));
        return;
    }
    const auto handle = call.parameter("handle");
    const auto password = call.parameter("password");
    try {
        const auto credentials = choice == QLatin1String("create")
                                     ? signIn.add(handle, password)
                                     : signIn.require(handle, password);
        const auto code = codes.issue(credentials, attempt.challenge.toLatin1(), now);
        redirect(call, attempt, QStringLiteral("code"), code);
    } catch (const RequestError &error) {
        Reply::setHeader(call.response(), error);
        showForm(call, error.status(), attempt, error.code());
    }
}

Login exchange(const CodeExchange &request, SignIn &signIn, SignInCodes &codes, qint64 now) {
    const auto credentials = codes.redeem(request.code, request.verifier, now);
    if (!credentials || request.client != client)
        throw RequestError(400, QStringLiteral("bad_code"),
                           QStringLiteral("This sign-in has expired or was used before. Try "
                                          "again."));
    return signIn.open(*credentials);
}

} // namespace

void BrowserRoutes::add(Router &router, SignIn &signIn, SignInCodes &codes, const Clock &clock) {
    router.add("GET", startPath, [](Call &call) { showForm(call, 200, readAttempt(call), {}); });
    router.add("POST", startPath,
               [&signIn, &codes, clock](Call &call) { takeForm(call, signIn, codes, clock()); });
    router.add("POST", QStringLiteral("/google/native/token"),
               [&signIn, &codes, clock](Call &call) {
                   const auto request = call.body<CodeExchange>();
                   call.reply(exchange(request, signIn, codes, clock()));
               });
}
