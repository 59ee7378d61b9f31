#include "tests/simulation/Simulation.h"

#include "platform/Start.h"
#include "sync/LibrarySync.h"

#include <algorithm>

namespace {

constexpr int steps = 150;
constexpr qsizetype longestTrace = 80;
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

bool isAtHome(const AppStore &store) {
    return store.baseString() != away;
}

} // namespace

Simulation::Simulation(unsigned seed, Database &database)
    : m_random(seed),
      m_service(database, QStringLiteral("Ann %1").arg(seed)),
      m_network([this](const HttpRequest &request) {
          // Elsewhere nobody has an account.
          if (request.url.host() == QLatin1String("away.example") &&
              request.url.path().startsWith(QLatin1String("/v1/account")))
              return HttpResponse{404, R"({"error":"not_found"})"};
          return m_service.answer(request);
      }) {
    const int count = 2 + m_random.below(3);
    m_guests.resize(static_cast<std::size_t>(count));
    for (int number = 0; number < count; ++number)
        m_devices.push_back(std::make_unique<Device>(
            m_network, m_directory.filePath(QString::number(number)), m_time));
    signInEverywhere();
}

void Simulation::note(const QString &event) {
    m_trace.append(event);
    if (m_trace.size() > longestTrace)
        m_trace.removeFirst();
}

QString Simulation::run() {
    for (int count = 0; count < steps; ++count) {
        step();
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
    auto &device = *m_devices[static_cast<std::size_t>(number)];
    auto &store = device.store();
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
        const auto &conversations = store.library().conversations;
        if (!conversations.isEmpty())
            editConversation(store,
                             conversations[m_random.below(static_cast<int>(conversations.size()))]);
    } else if (choice < 86) {
        const auto toggled = card(m_random.below(6));
        say(QStringLiteral("toggles ") + toggled.key);
        store.toggle(toggled);
        if (!store.account())
            m_guests[static_cast<std::size_t>(number)][store.libraryKey()] = store.library().saved;
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

void Simulation::changeIdentity(AppStore &store) {
    switch (m_random.below(4)) {
    case 0:
        store.beginLogout();
        break;
    case 1:
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
        if (device->store().account())
            m_ledger.save(device->store().library().conversations);
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
            m_network.step(m_random, false);
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

QString Simulation::check() {
    LocalLibrary held;
    LibrarySync::reconcile(m_service.library(), {}, held);
    for (std::size_t number = 0; number < m_devices.size(); ++number) {
        auto &device = *m_devices[number];
        const auto &store = device.store();
        const auto name = QStringLiteral("device %1: ").arg(number);
        const auto &library = store.library();
        if (!store.account() || !library.sync)
            return name + QStringLiteral("not signed in");
        if (!library.sync->pending.isEmpty())
            return name +
                   QStringLiteral("%1 changes still queued, ").arg(library.sync->pending.size()) +
                   store.syncStatus();
        if (library.sync->versions != held.sync->versions)
            return name + QStringLiteral("other versions than the service");
        if (library.saved != held.saved || library.conversations != held.conversations)
            return name + QStringLiteral("another library than the service");
        const auto missing = m_ledger.missing(library.conversations);
        if (!missing.isEmpty())
            return name + QStringLiteral("lost ") + missing.join(QLatin1String(", "));
    }
    if (m_service.preservedCopies() > m_service.conflicts())
        return QStringLiteral("%1 copies of %2 conflicts")
            .arg(m_service.preservedCopies())
            .arg(m_service.conflicts());
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
