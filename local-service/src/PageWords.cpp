#include "PageWords.h"

namespace {

PageWords english() {
    return {
        .language = QStringLiteral("en"),
        .code = QStringLiteral("en"),
        .registerTitle = QStringLiteral("Create an account"),
        .registerText =
            QStringLiteral("The account lives in the Quillmere service on this computer, and "
                           "nowhere else."),
        .name = QStringLiteral("Name"),
        .password = QStringLiteral("Password"),
        .passwordRule = QStringLiteral("At least 8 characters. Choose one that you use nowhere "
                                       "else."),
        .repeatPassword = QStringLiteral("Password again"),
        .create = QStringLiteral("Create account"),
        .created = QStringLiteral("Your account is ready"),
        .createdText = QStringLiteral("Go back to Quillmere and sign in as %1."),
        .signInTitle = QStringLiteral("Sign in on this computer"),
        .signInText =
            QStringLiteral("This page of the local service stands in for the sign-in with Google. "
                           "Nothing is sent to Google: use an account of this computer, or make "
                           "a new one."),
        .signIn = QStringLiteral("Sign in"),
        .createAndSignIn = QStringLiteral("Create account and sign in"),
        .decline = QStringLiteral("Decline"),
        .problems = {{QStringLiteral("bad_name"),
                      QStringLiteral("A name has 2 to 40 letters or digits; single blanks and the "
                                     "signs . _ - ' may stand among them.")},
                     {QStringLiteral("bad_password"),
                      QStringLiteral("A password must have at least 8 characters, and at most "
                                     "1000.")},
                     {QStringLiteral("name_taken"), QStringLiteral("This name is taken.")},
                     {QStringLiteral("different_passwords"),
                      QStringLiteral("The two passwords are not the same.")},
                     {QStringLiteral("bad_login"),
                      QStringLiteral("The name or the password is not right.")},
                     {QStringLiteral("too_many_attempts"),
                      QStringLiteral(
                          "Too many attempts have failed. Try again in a few minutes.")}},
    };
}

PageWords chinese() {
    return {
        .language = QStringLiteral("zh-Hans"),
        .code = QStringLiteral("zh"),
        .registerTitle = QStringLiteral("创建账号"),
        .registerText = QStringLiteral("账号只保存在这台电脑上的 Quillmere 服务中。"),
        .name = QStringLiteral("用户名"),
        .password = QStringLiteral("密码"),
        .passwordRule = QStringLiteral("至少 8 个字符。请使用未在别处用过的密码。"),
        .repeatPassword = QStringLiteral("再次输入密码"),
        .create = QStringLiteral("创建账号"),
        .created = QStringLiteral("账号已创建"),
        .createdText = QStringLiteral("请回到 Quillmere，以 %1 的名字登录。"),
        .signInTitle = QStringLiteral("在这台电脑上登录"),
        .signInText = QStringLiteral("这是本地服务的页面，用来代替 Google 登录。不会向 Google "
                                     "发送任何内容：请使用这台电脑上的账号，或创建一个新账号。"),
        .signIn = QStringLiteral("登录"),
        .createAndSignIn = QStringLiteral("创建账号并登录"),
        .decline = QStringLiteral("拒绝"),
        .problems = {{QStringLiteral("bad_name"),
                      QStringLiteral(
                          "用户名由 2 至 40 个字母、汉字或数字组成，中间可以有单个空格和 "
                          ". _ - ' 符号。")},
                     {QStringLiteral("bad_password"),
                      QStringLiteral("密码至少需要 8 个字符，最多 1000 个字符。")},
                     {QStringLiteral("name_taken"), QStringLiteral("该用户名已被使用。")},
                     {QStringLiteral("different_passwords"),
                      QStringLiteral("两次输入的密码不一致。")},
                     {QStringLiteral("bad_login"), QStringLiteral("用户名或密码不正确。")},
                     {QStringLiteral("too_many_attempts"),
                      QStringLiteral("失败次数过多，请过几分钟再试。")}},
    };
}

} // namespace

const PageWords &PageWords::of(const QString &code) {
    static const PageWords inEnglish = english();
    static const PageWords inChinese = chinese();
    return code.startsWith(QLatin1String("zh")) ? inChinese : inEnglish;
}
