#pragma once

#include "platform/Transport.h"
#include "platform/URLError.h"
#include "tests/simulation/Random.h"
#include "tests/support/FakeBody.h"

#include <functional>
#include <list>
#include <optional>

/// A network in which nothing moves until it is told to: requests and replies lie in flight, to be
/// moved on one at a time, in any order, and to be lost, repeated or left behind.
class VirtualNetwork final {
public:
    /// Answers a request of the device with that number.
    using Service = std::function<HttpResponse(const HttpRequest &, int device)>;

    explicit VirtualNetwork(Service service) : m_service(std::move(service)) {}

    /// One device's connection.
    class Line final : public Transport {
    public:
        Line(VirtualNetwork &network, int device) : m_network(network), m_device(device) {}

        [[nodiscard]] Task<HttpResponse> data(HttpRequest request, std::stop_token stop) override;
        [[nodiscard]] Task<std::unique_ptr<ByteStream>> stream(HttpRequest request,
                                                               std::stop_token stop) override;

        /// Ends all that waits here, and lets nothing more out. What is on its way may still reach
        /// the service.
        void cut();

    private:
        VirtualNetwork &m_network;
        int m_device;
        bool m_cut = false;
    };

    bool isQuiet() const { return m_messages.empty(); }

    /// Moves one message on and tells what happened to it; only a faulty step mistreats any.
    QString step(Random &random, bool faulty);

private:
    struct Message {
        const Line *line;
        int device;
        HttpRequest request;
        /// One of them waits, as long as its device cares.
        std::optional<Completion<HttpResponse>> whole;
        std::optional<Completion<std::shared_ptr<FakeBody>>> streamed;
        std::optional<HttpResponse> response;
        std::shared_ptr<FakeBody> body;
        QList<QByteArray> pieces;
    };
    using Place = std::list<Message>::iterator;

    static void fail(Message &message, URLError::Code code);
    QString moveRequest(Place place, Random &random, bool faulty);
    QString moveReply(Place place, Random &random, bool faulty);
    QString moveStream(Place place, Random &random, bool faulty);

    Service m_service;
    std::list<Message> m_messages;
};
