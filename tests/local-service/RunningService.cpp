#include "RunningService.h"

#include <gtest/gtest.h>

RunningService::RunningService(QList<QByteArray> dataSet, Pause pause,
                               std::optional<ModelSettings> model)
    : service({home(), 0, std::move(dataSet), [this] { return now.load(); }, std::move(pause),
               std::move(model)}) {
    service.start();
}

httplib::Client RunningService::client() const {
    httplib::Client client("127.0.0.1", service.port());
    client.set_read_timeout(std::chrono::minutes(1));
    return client;
}

httplib::Response RunningService::get(const std::string &address) {
    return ask(address, {});
}

httplib::Response RunningService::ask(const std::string &address, const QByteArray &json,
                                      const QString &token) {
    httplib::Headers headers;
    if (!token.isEmpty())
        headers.emplace("Authorization", "Bearer " + token.toStdString());
    auto result = json.isEmpty()
                      ? client().Get(address, headers)
                      : client().Post(address, headers, json.toStdString(), "application/json");
    if (result)
        return *result;
    httplib::Response none;
    none.status = 0;
    return none;
}

httplib::Response RunningService::registerAccount(const std::string &handle) {
    const auto result = client().Post(
        "/google/register",
        httplib::Params{{"handle", handle}, {"password", password}, {"repeat", password}});
    EXPECT_TRUE(result);
    return *result;
}

Login RunningService::join(const std::string &handle) {
    EXPECT_EQ(registerAccount(handle).status, 200);
    return signIn(handle);
}

Login RunningService::signIn(const std::string &handle) {
    const auto json =
        R"({"handle":")" + handle + R"(","password":")" + password + R"(","device":"Test"})";
    return ask<Login>("/v1/account/login", QByteArray::fromStdString(json), {});
}

QByteArray RunningService::success(const std::string &address, const httplib::Response &response) {
    EXPECT_EQ(response.status, 200) << address << response.body;
    EXPECT_EQ(response.get_header_value("Content-Type"), "application/json");
    return QByteArray::fromStdString(response.body);
}

QStringList RunningService::search(const std::string &query) {
    QStringList ids;
    const auto page = read<SearchPage>("/v1/search?" + query);
    for (const CaseCard &card : page.items)
        ids.append(card.id);
    return ids;
}
