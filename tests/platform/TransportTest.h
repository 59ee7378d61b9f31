#pragma once

#include "platform/CancellationError.h"
#include "platform/QtTransport.h"
#include "platform/URLError.h"
#include "tests/support/Await.h"
#include "tests/support/ScriptedService.h"

#include <gtest/gtest.h>

/// The true transport against a scripted service.
class TransportTest : public testing::Test {
protected:
    HttpRequest get(const QString &address) const {
        HttpRequest request;
        request.url = QUrl(address);
        return request;
    }
    HttpRequest getPath(const QString &path) const { return get(service.base() + path); }

    HttpRequest postPath(const QString &path, const QByteArray &body = R"({"question":1})") const {
        HttpRequest request = getPath(path);
        request.method = "POST";
        request.headers = {{"Content-Type", "application/json"}};
        request.body = body;
        return request;
    }

    static HttpRequest withToken(HttpRequest request) {
        request.headers.emplace_back("Authorization", "Bearer secret");
        return request;
    }

    [[nodiscard]] Task<HttpResponse> send(HttpRequest request) {
        return transport.data(std::move(request), stop.get_token());
    }

    HttpResponse response(const HttpRequest &request) { return await(send(request)); }

    /// How a request ended, in one word: "200", "timedOut", "cancelled".
    static std::string ending(Task<HttpResponse> task) {
        try {
            return std::to_string(await(std::move(task)).status);
        } catch (const URLError &error) {
            return URLError::name(error.code()).toStdString();
        } catch (const CancellationError &) {
            return "cancelled";
        }
    }
    std::string ending(const HttpRequest &request) { return ending(send(request)); }

    ScriptedService service;
    QtTransport transport;
    std::stop_source stop;
};
