#pragma once

#include "platform/CancellationError.h"
#include "platform/QtTransport.h"
#include "platform/URLError.h"
#include "tests/support/Await.h"
#include "tests/support/ScriptedService.h"

#include <gtest/gtest.h>

/// All that came of a reply, and how it ended: "whole", "timedOut", "cancelled".
struct Reading {
    int status = 0;
    QByteArray bytes;
    qsizetype longestPiece = 0;
    std::string ending;
};

/// The two ways to ask: for the whole reply, and for one that is read as it comes.
enum class Way { whole, streamed };

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

    /// Each kind of request to this path.
    std::vector<std::pair<Way, HttpRequest>> everyRequest(const QString &path) const {
        return {{Way::whole, getPath(path)},
                {Way::whole, postPath(path)},
                {Way::streamed, postPath(path)}};
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
        auto reading = std::make_shared<Reading>();
        follow(readWhole(std::move(task), reading), reading);
        EXPECT_TRUE(ended(reading));
        return reading->ending == "whole" ? std::to_string(reading->status) : reading->ending;
    }
    std::string ending(const HttpRequest &request) { return ending(send(request)); }

    std::shared_ptr<Reading> begin(Way way, const HttpRequest &request) {
        auto reading = std::make_shared<Reading>();
        follow(way == Way::whole ? readWhole(send(request), reading)
                                 : readPieces(transport.stream(request, stop.get_token()), reading),
               reading);
        return reading;
    }
    static bool ended(const std::shared_ptr<Reading> &reading) {
        return eventually([&] { return !reading->ending.empty(); });
    }
    Reading read(Way way, const HttpRequest &request) {
        const auto reading = begin(way, request);
        EXPECT_TRUE(ended(reading));
        return *reading;
    }

    bool lastConnectionCloses() {
        const auto connection = service.requests().back().connection;
        return eventually([&] { return !service.isOpen(connection); });
    }

    ScriptedService service;
    QtTransport transport;
    std::stop_source stop;

private:
    static Task<void> readWhole(Task<HttpResponse> asking, std::shared_ptr<Reading> reading) {
        const HttpResponse response = co_await asking;
        reading->status = response.status;
        reading->bytes = response.body;
    }

    static Task<void> readPieces(Task<std::unique_ptr<ByteStream>> opening,
                                 std::shared_ptr<Reading> reading) {
        const std::unique_ptr<ByteStream> stream = co_await opening;
        reading->status = stream->status();
        while (true) {
            auto next = stream->read();
            const QByteArray piece = co_await next;
            if (piece.isEmpty())
                co_return;
            reading->bytes += piece;
            reading->longestPiece = std::max(reading->longestPiece, piece.size());
        }
    }

    static Task<void> follow(Task<void> task, std::shared_ptr<Reading> reading) {
        try {
            co_await task;
            reading->ending = "whole";
        } catch (const URLError &error) {
            reading->ending = URLError::name(error.code()).toStdString();
        } catch (const CancellationError &) {
            reading->ending = "cancelled";
        }
    }
};
