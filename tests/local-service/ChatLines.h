#pragma once

#include "RunningService.h"

#include "records/Conversation.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

/// What the program asks of, and reads from, a run.
namespace ChatLines {

inline constexpr auto runs = "/v1/chat/runs";

inline QByteArray body(const QByteArray &question, const QByteArray &archives = "[]",
                       const QByteArray &messages = "[]", const QByteArray &locale = "en") {
    return R"({"question":")" + question + R"(","archives":)" + archives + R"(,"locale":")" +
           locale + R"(","messages":)" + messages + R"(,"cases":[]})";
}

inline QList<ChatEvent> events(const httplib::Response &response) {
    QList<ChatEvent> events;
    const auto lines = QByteArray::fromStdString(response.body).split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            events.append(Json::decode<ChatEvent>(line));
    }
    return events;
}

/// The one that holds the cited cases.
inline const ChatEvent &references(const QList<ChatEvent> &events) {
    const auto found = std::find_if(events.begin(), events.end(), [](const ChatEvent &event) {
        return event.type == QLatin1String("references");
    });
    EXPECT_NE(found, events.end());
    return *found;
}

/// Asks, and hangs up as soon as `enough` of the reply has come.
inline void hangUp(RunningService &running, const Login &login, const QByteArray &question,
                   const std::function<bool(const std::string &received)> &enough) {
    auto client = running.client();
    std::string received;
    httplib::Request request;
    request.method = "POST";
    request.path = runs;
    request.headers = {{"Authorization", "Bearer " + login.token.toStdString()},
                       {"Content-Type", "application/json"}};
    request.body = question.toStdString();
    request.content_receiver = [&](const char *bytes, std::size_t size, std::uint64_t,
                                   std::uint64_t) {
        received.append(bytes, size);
        return !enough(received);
    };
    httplib::Response response;
    auto error = httplib::Error::Success;
    client.send(request, response, error);
    EXPECT_EQ(error, httplib::Error::Canceled) << received;
}

inline qint64 questionsUsed(RunningService &running, const Login &login) {
    return running.ask<Quota>("/v1/account/quota", {}, login.token).used;
}

} // namespace ChatLines
