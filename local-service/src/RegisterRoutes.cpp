#include "RegisterRoutes.h"

#include "FormPage.h"
#include "PageWords.h"
#include "Router.h"
#include "SignIn.h"

namespace {

QByteArray formPage(const PageWords &words, const QString &handle, const QString &problem) {
    const QString body =
        FormPage::paragraph(words.registerText) + FormPage::problem(problem) +
        QStringLiteral("<form method=\"post\" action=\"/google/register\">\n") +
        FormPage::hiddenField("lang", words.code) + FormPage::nameField(words, handle) +
        FormPage::passwordField("password", words.password, "new-password", words.passwordRule) +
        FormPage::passwordField("repeat", words.repeatPassword, "new-password") +
        FormPage::button(words.create, "class=\"main\"") + QStringLiteral("</form>\n");
    return FormPage::html(words, words.registerTitle, body);
}

void showForm(Call &call) {
    const auto &words = PageWords::of(call.parameter("lang"));
    call.replyForm(200, formPage(words, {}, {}), FormPage::style());
}

void takeForm(Call &call, SignIn &signIn) {
    const auto &words = PageWords::of(call.parameter("lang"));
    const auto handle = call.parameter("handle");
    try {
        if (call.parameter("password") != call.parameter("repeat"))
            throw RequestError(400, QStringLiteral("different_passwords"), {});
        signIn.add(handle, call.parameter("password"));
    } catch (const RequestError &error) {
        call.replyForm(error.status(), formPage(words, handle, words.problems.value(error.code())),
                       FormPage::style());
        return;
    }
    const auto text = FormPage::paragraph(words.createdText.arg(handle.trimmed()));
    call.replyForm(200, FormPage::html(words, words.created, text), FormPage::style());
}

} // namespace

void RegisterRoutes::add(Router &router, SignIn &signIn) {
    router.add("GET", QStringLiteral("/google/register"), showForm);
    router.add("POST", QStringLiteral("/google/register"),
               [&signIn](Call &call) { takeForm(call, signIn); });
}
