#include "RunningService.h"

#include <gtest/gtest.h>

RunningService::RunningService(QList<QByteArray> dataSet)
    : service({m_home.filePath(QStringLiteral("service")), 0, std::move(dataSet)}) {
    service.start();
}

httplib::Response RunningService::get(const std::string &address) {
    auto result = client().Get(address);
    if (result)
        return *result;
    httplib::Response none;
    none.status = 0;
    return none;
}

QByteArray RunningService::body(const std::string &address) {
    const auto response = get(address);
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
