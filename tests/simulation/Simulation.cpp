#include "tests/simulation/Simulation.h"

#include "platform/Start.h"
#include "tests/support/Settle.h"

#include <algorithm>
#include <tuple>

namespace {

constexpr int steps = 150;
constexpr qsizetype longestTrace = 300;
const QString away = QStringLiteral("https://away.example");

Task<void> signIn(AppStore *store) {
    try {
        auto login = store->login(QStringLiteral("Ann"), QStringLiteral("secret"));
        co_await login;
    } catch (...) {
        // The network is what is being tried.
    }
}

CaseCard card(int number) {
    CaseCard card;
    card.id = QString::number(number);
    card.key = QStringLiteral("foible:") + card.id;
    card.archive = QStringLiteral("foible");
    card.title = QStringLiteral("Case ") + card.id;
    return card;
}

/// Identities are made anew in each run, so nothing is chosen by them.
QList<Conversation> orderedByContent(QList<Conversation> conversations) {
    const auto content = [](const Conversation &conversation) {
        return std::tuple(conversation.updatedAt.milliseconds, conversation.title,
                          conversation.messages.size());
    };
    std::sort(conversations.begin(), conversations.end(),
              [&](const auto &one, const auto &other) { return content(one) < content(other); });
    return conversations;
}

bool isAtHome(const AppStore &store) {
    return store.baseString() != away;
}

} // namespace

Simulation::Simulation(unsigned seed, Database &database)
    : m_random(seed),
      m_service(database, QStringLiteral("Ann %1").arg(seed),
                [this](const QString &event) { note(event); }),
      m_network([this](const HttpRequest &request, int device) {
          // Elsewhere nobody has an account.
          if (request.url.host() == QLatin1String("away.example") &&
              request.url.path().startsWith(QLatin1String("/v1/account")))
              return HttpResponse{404, R"({"error":"not_found"})"};
          return m_service.answer(request, this->device(device).store().library().sync);
      }) {
    const int count = 2 + m_random.below(3);
    m_guests.resize(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number)
        m_devices.push_back(std::make_unique<Device>(
            m_network, number, m_directory.filePath(QString::number(number)), m_time));
    signInEverywhere();
}

Device &Simulation::device(int number) {
    return *m_devices[static_cast<std::size_t>(number)];
}

void Simulation::note(const QString &event) {
    m_trace.append(event);
    if (m_trace.size() > longestTrace)
        m_trace.removeFirst();
}

QString Simulation::run() {
    for (int count = 0; count < steps; ++count) {
        step();
        record();
        // Now and then the next step comes before the worker is through.
        if (m_random.chance(50))
            settleWithSlowWorker(m_random.below(3));
        else
            settleAll();
        record();
    }
    settleDown();
    return check();
}

void Simulation::step() {
    const int choice = m_random.below(100);
    if (choice < 45 && !m_network.isQuiet()) {
        note(m_network.step(m_random, true));
    } else if (choice < 62) {
        const std::chrono::milliseconds duration(m_random.below(1500));
        m_time += duration;
        for (const auto &device : m_devices)
            device->advance(duration);
    } else {
        edit(m_random.below(static_cast<int>(m_devices.size())));
    }
}

void Simulation::edit(int number) {
    auto &device = this->device(number);
    auto &store = device.store();
    // No two edits of a device fall into one moment.
    device.advance(std::chrono::milliseconds(1));
    const auto say = [&](const QString &event) {
        note(QStringLiteral("device %1 %2").arg(number).arg(event));
    };
    const int choice = m_random.below(100);
    if (choice < 30) {
        const auto question = m_ledger.newText(u'Q');
        say(QStringLiteral("asks ") + question);
        store.startChat(question, {});
    } else if (choice < 34) {
        say(QStringLiteral("stops"));
        store.stopChat();
    } else if (choice < 40) {
        say(QStringLiteral("opens a new chat"));
        store.newChat();
    } else if (choice < 76) {
        const auto conversations = orderedByContent(store.library().conversations);
        if (!conversations.isEmpty())
            editConversation(store,
                             conversations[m_random.below(static_cast<int>(conversations.size()))]);
    } else if (choice < 85) {
        const auto toggled = card(m_random.below(12));
        say(QStringLiteral("toggles ") + toggled.key);
        toggle(number, toggled);
    } else if (choice < 86 && m_random.chance(30)) {
        say(QStringLiteral("saves more cases than fit into a request"));
        for (int count = 0; count < 55; ++count)
            toggle(number, card(m_nextCard++));
    } else if (choice < 91) {
        say(QStringLiteral("crashes"));
        device.crash();
        device.start();
    } else if (choice < 96) {
        say(QStringLiteral("changes identity or server"));
        changeIdentity(store);
    } else {
        store.beginSync();
    }
}

void Simulation::editConversation(AppStore &store, const Conversation &conversation) {
    const auto id = conversation.id;
    switch (m_random.below(4)) {
    case 0: {
        const auto title = m_ledger.newText(u'T');
        note(QStringLiteral("rename of %1 to %2").arg(conversation.title, title));
        m_ledger.overwriteTitle(conversation);
        store.renameConversation(id, title);
        break;
    }
    case 1:
        note(QStringLiteral("removal of ") + conversation.title);
        m_ledger.remove(conversation);
        store.deleteConversation(conversation);
        break;
    default:
        note(QStringLiteral("opening of ") + conversation.title);
        store.openChat(conversation);
        break;
    }
}

void Simulation::toggle(int number, const CaseCard &card) {
    auto &store = device(number).store();
    store.toggle(card);
    if (store.account())
        m_ledger.toggle(card, store.saved(card));
    else
        m_guests[static_cast<std::size_t>(number)][store.libraryKey()] = store.library().saved;
}

void Simulation::changeIdentity(AppStore &store) {
    switch (m_random.below(5)) {
    case 0:
        store.beginLogout();
        break;
    case 1:
        if (const auto token = store.api().token())
            m_service.endSession(token->toUtf8());
        break;
    case 2:
        store.beginChangeServer(isAtHome(store) ? away : QStringLiteral("http://127.0.0.1:4310"));
        break;
    default:
        if (isAtHome(store) && !store.account())
            start(store, [&store] { return signIn(&store); });
        break;
    }
}

void Simulation::record() {
    for (const auto &device : m_devices) {
        const auto &store = device->store();
        if (!store.account())
            continue;
        m_ledger.save(store.library().conversations);
        if (store.library().sync)
            m_service.audit().queued(*store.library().sync);
    }
}

void Simulation::signInEverywhere() {
    deliverEverything();
    for (const auto &device : m_devices) {
        auto &store = device->store();
        if (!isAtHome(store)) {
            store.beginChangeServer(QStringLiteral("http://127.0.0.1:4310"));
            deliverEverything();
        }
        // A login that the service has ended is found out.
        store.beginConnect();
        deliverEverything();
        if (!store.account())
            start(store, [&store] { return signIn(&store); });
        deliverEverything();
    }
}

void Simulation::settleDown() {
    signInEverywhere();
    // The first round brings everything to the service, the second one everything to everybody.
    for (int round = 0; round < 2; ++round) {
        for (const auto &device : m_devices) {
            device->store().beginSync();
            deliverEverything();
        }
    }
}

void Simulation::deliverEverything() {
    settleAll();
    for (int rounds = 0; rounds < 1000; ++rounds) {
        while (!m_network.isQuiet()) {
            note(m_network.step(m_random, false));
            settleAll();
            record();
        }
        const bool waiting = std::any_of(m_devices.begin(), m_devices.end(),
                                         [](const auto &device) { return device->isWaiting(); });
        if (!waiting)
            return;
        for (const auto &device : m_devices)
            device->advance(std::chrono::seconds(1));
        settleAll();
    }
    note(QStringLiteral("never came to rest"));
}

/// Made by hand from the records: what merges them on the devices is on trial itself.
struct Simulation::Held {
    QHash<QString, qint64> versions;
    QHash<QString, CaseCard> cards;
    QHash<Identifier, Conversation> conversations;

    explicit Held(const LibraryReply &reply) {
        for (const auto &record : reply.records) {
            versions.insert(record.identity(), record.version);
            if (record.card)
                cards.insert(record.key, *record.card);
            if (record.conversation)
                conversations.insert(record.conversation->id, *record.conversation);
        }
    }

    bool equals(const LocalLibrary &library) const {
        return library.saved.size() == cards.size() &&
               library.conversations.size() == conversations.size() &&
               std::all_of(library.saved.begin(), library.saved.end(),
                           [&](const CaseCard &card) { return cards.value(card.key) == card; }) &&
               std::all_of(library.conversations.begin(), library.conversations.end(),
                           [&](const Conversation &conversation) {
                               return conversations.value(conversation.id) == conversation;
                           });
    }
};

QString Simulation::check() {
    if (!m_service.audit().violation().isEmpty())
        return m_service.audit().violation();
    const Held held(m_service.library());
    for (std::size_t number = 0; number < m_devices.size(); ++number) {
        const auto name = QStringLiteral("device %1: ").arg(number);
        const auto fault = checkDevice(m_devices[number]->store(), held);
        if (!fault.isEmpty())
            return name + fault;
        const auto &first = m_devices.front()->store().library();
        const auto &library = m_devices[number]->store().library();
        if (library.saved != first.saved || library.conversations != first.conversations)
            return name + QStringLiteral("another order than the first device");
    }
    for (std::size_t number = 0; number < m_devices.size(); ++number) {
        auto &device = *m_devices[number];
        const auto &guests = m_guests[number];
        for (auto guest = guests.cbegin(); guest != guests.cend(); ++guest) {
            if (device.guestCards(guest.key()) != guest.value())
                return QStringLiteral("device %1: lost cards of its guest").arg(number);
        }
    }
    return {};
}

QString Simulation::checkDevice(const AppStore &store, const Held &held) const {
    const auto &library = store.library();
    if (!store.isConnected() || !store.account() || !library.sync)
        return QStringLiteral("not connected and signed in");
    if (!library.sync->pending.isEmpty())
        return QStringLiteral("%1 changes still queued, ").arg(library.sync->pending.size()) +
               store.syncStatus();
    if (library.sync->versions != held.versions)
        return QStringLiteral("other versions than the service");
    if (!held.equals(library))
        return QStringLiteral("another library than the service");
    const auto missing = m_ledger.missing(library.conversations, library.saved);
    if (!missing.isEmpty())
        return QStringLiteral("lost ") + missing.join(QLatin1String(", "));
    return {};
}
