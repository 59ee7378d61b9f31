#include "platform/CancellationError.h"
#include "service/API.h"
#include "service/ServiceError.h"
#include "tests/support/Await.h"
#include "tests/support/BusyWorkers.h"
#include "tests/support/FakeTransport.h"

#include "records/Catalogue.h"

#include <QThread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray list(qsizetype bytes) {
    return R"({"items":[")" + QByteArray(bytes - 14, 'x') + R"("]})";
}

class Call : public testing::Test {
protected:
    Task<Items<QString>> begin() {
        return api.get<Items<QString>>(u"v1/items"_s, {}, stop.get_token());
    }

    void answer(int status, const QByteArray &body) {
        transport.answer(u"/v1/items"_s, status, body);
    }

    /// How a call ended, in words.
    static std::string ending(Task<Items<QString>> task) {
        try {
            return await(std::move(task)).items.join(u',').left(20).toStdString();
        } catch (const ServiceError &error) {
            return std::to_string(error.status.value_or(0)) + " " +
                   error.errorDescription().toStdString();
        } catch (const URLError &error) {
            return URLError::name(error.code()).toStdString();
        } catch (const DecodingError &) {
            return "undecodable";
        } catch (const CancellationError &) {
            return "cancelled";
        }
    }

    std::string ending(int status, const QByteArray &body) {
        auto task = begin();
        answer(status, body);
        return ending(std::move(task));
    }

    FakeTransport transport;
    API api{u"https://a.example"_s, std::nullopt, transport};
    std::stop_source stop;
};

} // namespace

TEST_F(Call, turnsStatusAndBodyIntoARecordOrAFailure) {
    struct Row {
        int status;
        QByteArray body;
        const char *expected;
    };
    const QByteArray html = "<!doctype html><title>Gateway</title>";
    const std::vector<Row> rows = {
        {200, R"({"items":["a","b"]})", "a,b"},
        {201, R"({"items":["a"],"more":{}})", "a"},
        {299, R"({"items":[]})", ""},
        {200, "", "undecodable"},
        {204, "", "undecodable"},
        {200, "{}", "undecodable"},
        {200, html, "undecodable"},
        {200, R"({"items":null})", "undecodable"},
        {200, R"({"error":"not_really","message":"No."})", "undecodable"},
        {200, R"({"items":["a"]} trailing)", "undecodable"},
        {401, R"({"error":"signin_required"})", "401 signin required"},
        {403, R"({"error":"a_b_c","message":null})", "403 a b c"},
        {403, R"({"error":"taken","message":"That name is taken."})", "403 That name is taken."},
        {403, R"({"error":"taken","message":""})", "403 "},
        {409, R"({"error":"x","status":200,"detail":[1]})", "409 x"},
        {400, R"({"error":7})", "400 http 400"},
        {400, R"({"error":"x","message":7})", "400 http 400"},
        {400, R"({"message":"No code."})", "400 http 400"},
        {404, "", "404 http 404"},
        {413, "[]", "413 http 413"},
        {500, html, "500 http 500"},
        {502, R"({"error":"cut)", "502 http 502"},
        {100, "", "100 http 100"},
        {199, R"({"items":["a"]})", "199 http 199"},
        {300, R"({"items":["a"]})", "300 http 300"},
        {302, "", "302 http 302"},
        {304, "", "304 http 304"},
        {307, R"({"error":"moved_away"})", "307 moved away"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ending(row.status, row.body), row.expected) << row.status << row.body.constData();
}

TEST_F(Call, theMachineCodeStaysReadable) {
    for (const auto &[body, code] :
         {std::pair{R"({"error":"signin_required"})", u"signin_required"_s},
          std::pair{"<html>", u"http_401"_s}}) {
        auto task = begin();
        answer(401, body);
        try {
            await(std::move(task));
            FAIL() << "a failed reply is no result";
        } catch (const ServiceError &error) {
            EXPECT_EQ(error.error, code);
            EXPECT_EQ(error.message, std::nullopt);
        }
    }
}

TEST_F(Call, failuresOfTheTransportPassUnchanged) {
    for (const auto code : {URLError::Code::timedOut, URLError::Code::networkConnectionLost}) {
        auto task = begin();
        transport.fail(u"/v1/items"_s, code);
        EXPECT_EQ(ending(std::move(task)), URLError::name(code).toStdString());
    }
    auto task = begin();
    stop.request_stop();
    EXPECT_EQ(ending(std::move(task)), "cancelled");
    EXPECT_EQ(ending(begin()), "cancelled");
    EXPECT_EQ(transport.requests().size(), 3U) << "nothing is sent once it is cancelled";
}

TEST_F(Call, largeRepliesAreDecodedOnAWorkerWhileTheEventLoopTurns) {
    BusyWorkers workers;
    auto large = begin();
    answer(200, list(API::decodedInPlace + 1));
    auto broken = begin();
    answer(200, QByteArray(API::decodedInPlace + 1, ' '));
    settleEventLoop();
    EXPECT_FALSE(large.isReady());

    // Small ones do not wait for a worker.
    auto small = begin();
    answer(200, list(API::decodedInPlace));
    EXPECT_EQ(ending(std::move(small)), "xxxxxxxxxxxxxxxxxxxx");
    EXPECT_FALSE(large.isReady());
    EXPECT_FALSE(broken.isReady());

    workers.release();
    EXPECT_EQ(ending(std::move(large)), "xxxxxxxxxxxxxxxxxxxx");
    EXPECT_EQ(ending(std::move(broken)), "undecodable");
}

namespace {

Task<void> noteThread(Task<Items<QString>> task, QThread **thread) {
    Items<QString> items = co_await task;
    *thread = QThread::currentThread();
}

} // namespace

TEST_F(Call, theCallerGoesOnOnTheMainThread) {
    for (const auto size : {API::decodedInPlace, API::decodedInPlace + 1}) {
        QThread *thread = nullptr;
        auto noting = noteThread(begin(), &thread);
        answer(200, list(size));
        await(std::move(noting));
        EXPECT_EQ(thread, QCoreApplication::instance()->thread()) << size;
    }
}

TEST_F(Call, aCancellationWhileDecodingIsACancellation) {
    BusyWorkers workers;
    auto whole = begin();
    answer(200, list(API::decodedInPlace + 1));
    auto broken = begin();
    answer(200, QByteArray(API::decodedInPlace + 1, ' '));
    settleEventLoop();
    stop.request_stop();
    workers.release();
    EXPECT_EQ(ending(std::move(whole)), "cancelled");
    EXPECT_EQ(ending(std::move(broken)), "cancelled");
}

TEST_F(Call, twoRequestsOfOneValueAreIndependent) {
    auto first = begin();
    auto second = begin();
    answer(500, "");
    answer(200, R"({"items":["second"]})");
    EXPECT_EQ(ending(std::move(second)), "second");
    EXPECT_EQ(ending(std::move(first)), "500 http 500");
}
