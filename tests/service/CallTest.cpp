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

Task<void> noteThread(Task<Items<QString>> task, QThread **thread) {
    Items<QString> items = co_await task;
    EXPECT_EQ(items.items.join(u',').left(3), u"xxx"_s);
    *thread = QThread::currentThread();
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
            return std::to_string(error.status.value_or(0)) + " " + error.error.toStdString() +
                   ": " + error.errorDescription().toStdString();
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
        {204, "", "undecodable"},
        {200, html, "undecodable"},
        {200, R"({"error":"not_really","message":"No."})", "undecodable"},
        {401, R"({"error":"signin_required"})", "401 signin_required: signin required"},
        {403, R"({"error":"a_b_c","message":null})", "403 a_b_c: a b c"},
        {403, R"({"error":"taken","message":"Taken."})", "403 taken: Taken."},
        {403, R"({"error":"taken","message":""})", "403 taken: "},
        {409, R"({"error":"x","status":200,"detail":[1]})", "409 x: x"},
        {400, R"({"error":7})", "400 http_400: http 400"},
        {400, R"({"error":"x","message":7})", "400 http_400: http 400"},
        {404, "", "404 http_404: http 404"},
        {500, html, "500 http_500: http 500"},
        {502, R"({"error":"cut)", "502 http_502: http 502"},
        {199, R"({"items":["a"]})", "199 http_199: http 199"},
        {300, R"({"items":["a"]})", "300 http_300: http 300"},
        {307, R"({"error":"moved_away"})", "307 moved_away: moved away"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ending(row.status, row.body), row.expected) << row.status << row.body.constData();
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

    // The caller goes on on the main thread.
    QThread *thread = nullptr;
    auto noting = noteThread(std::move(large), &thread);
    workers.release();
    await(std::move(noting));
    EXPECT_EQ(thread, QCoreApplication::instance()->thread());
    EXPECT_EQ(ending(std::move(broken)), "undecodable");
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
