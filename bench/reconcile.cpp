#include "bench/FixedService.h"
#include "bench/Measure.h"
#include "bench/SampleRecords.h"
#include "bench/SignedInStore.h"
#include "bench/TimedApplication.h"
#include "platform/SystemFiles.h"
#include "records/Json.h"
#include "screens/HistoryModel.h"
#include "storage/LibraryDisk.h"
#include "sync/LibrarySync.h"

#include <QEventLoop>
#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <memory>

namespace {

/// The library of an account as its service tells it.
LibraryReply replyOf(const LocalLibrary &library) {
    LibraryReply reply;
    for (const auto &card : library.saved) {
        LibraryRecord record;
        record.kind = QStringLiteral("saved");
        record.key = card.key;
        record.version = ++reply.revision;
        record.card = card;
        reply.records.append(record);
    }
    for (const auto &conversation : library.conversations) {
        LibraryRecord record;
        record.kind = QStringLiteral("conversation");
        record.key = conversation.id.text;
        record.version = ++reply.revision;
        record.conversation = conversation;
        reply.records.append(record);
    }
    return reply;
}

/// Many small items: half cards, half conversations of two messages.
LocalLibrary smallItems(qsizetype count) {
    LocalLibrary library;
    library.saved = SampleRecords::shortCards().items.first(count / 2);
    for (qsizetype at = 0; at < count / 2; ++at) {
        Conversation conversation;
        conversation.title = library.saved[at].title;
        conversation.updatedAt = {1'700'000'000'000 + at * 7919 % 1'000'003};
        conversation.messages = {
            ChatMessage::make(ChatMessage::user, conversation.title),
            ChatMessage::make(ChatMessage::assistant, library.saved[at].summary)};
        library.conversations.append(conversation);
    }
    return library;
}

/// The reference: which version each item of a reply has, and where it stands.
void buildMaps(const LibraryReply &reply) {
    QHash<QString, qint64> versions;
    QHash<QString, const LibraryRecord *> records;
    versions.reserve(reply.records.size());
    records.reserve(reply.records.size());
    for (const auto &record : reply.records) {
        const auto identity = record.identity();
        versions.insert(identity, record.version);
        records.insert(identity, &record);
    }
    benchmark::DoNotOptimize(versions);
    benchmark::DoNotOptimize(records);
}

/// A signed-in program with the list of its history, on a real disk and a real connection.
class Program final {
public:
    explicit Program(const QString &server) : m_store(server) {
        m_history.setProperty("store", QVariant::fromValue(&*m_store));
        m_history.componentComplete();
        QObject::connect(&*m_store, &AppStore::syncingChanged, &m_loop, [this] {
            if (!m_store->isSyncing())
                m_loop.quit();
        });
    }

    void sync() {
        m_store->beginSync();
        m_loop.exec();
        require(m_store->syncStatus() == QLatin1String("Synced with your account."), "the sync");
    }

    /// As if another device had saved it.
    void forgetACard() { StoreAccess::library(*m_store).saved.removeLast(); }

    /// As on a machine that the account is new to.
    void forget() {
        QFile::remove(LibraryDisk::file(m_store.files(), m_store->libraryKey()));
        m_store->loadLibrary();
    }

    const LocalLibrary &library() const { return m_store->library(); }

private:
    SignedInStore<SystemFiles> m_store;
    QEventLoop m_loop;
    HistoryModel m_history;
};

void measureReconcile() {
    static const auto held = smallItems(10'000);
    static const auto reply = replyOf(held);
    static LocalLibrary local;
    LibrarySync::reconcile(reply, {}, local);
    for (qsizetype at = 0; at < 50; ++at) {
        auto conversation = local.conversations[at * 100];
        conversation.title += QLatin1Char('+');
        LibrarySync::enqueueConversation(conversation, std::nullopt, local);
    }
    static const auto sent = local.sync->pending;
    measure("reconcile/10,000 records/codec", [] {
        auto library = local;
        LibrarySync::reconcile(reply, sent, library);
        benchmark::DoNotOptimize(library);
    });
    measure("reconcile/10,000 records/reference", [] { buildMaps(reply); });
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    TimedApplication application(argc, argv);
    // Titles are compared by the rules of a language, which costs more than comparing characters.
    QLocale::setDefault(QLocale(QLocale::English));
    benchmark::Initialize(&argc, argv);
    measureReconcile();

    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    const auto reply = replyOf(SampleRecords::keptLibrary());
    const FixedService service(Json::encode(reply), FixedService::Pace::flood);
    Program program(service.base());
    program.sync();
    require(program.library().conversations.size() == 1000 && program.library().saved.size() == 500,
            "the library");
    const auto step = [&] {
        application.takeLongest();
        program.sync();
        return application.takeLongest();
    };
    measureItself("step/sync of 10 MB, as here", step);
    measureItself("step/sync of 10 MB, a card new", [&] {
        program.forgetACard();
        return step();
    });
    measureItself("step/sync of 10 MB, all new", [&] {
        program.forget();
        return step();
    });
    benchmark::RunSpecifiedBenchmarks();
}
