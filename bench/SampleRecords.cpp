#include "bench/SampleRecords.h"

#include <array>
#include <random>

namespace {

QString words(std::mt19937 &random, int length, bool latin = true) {
    static const std::array latinWords = {
        QStringLiteral("bridge "),  QStringLiteral("warning "),   QStringLiteral("the "),
        QStringLiteral("of "),      QStringLiteral("pressure, "), QStringLiteral("\"design\" "),
        QStringLiteral(u"façade "), QStringLiteral("engineer "),  QStringLiteral("committee.\n")};
    static const std::array otherWords = {
        QStringLiteral(u"橋の設計"), QStringLiteral(u"실패한 기록 "),
        QStringLiteral(u"工程师的警告，"), QStringLiteral(u"「見直し」")};
    QString result;
    while (result.size() < length) {
        result += latin ? latinWords[random() % latinWords.size()]
                        : otherWords[random() % otherWords.size()];
    }
    return result;
}

CaseCard card(std::mt19937 &random, int summaryLength) {
    const bool latin = random() % 5 != 0;
    CaseCard result;
    result.id = QString::number(random());
    result.key = QStringLiteral("foible:") + result.id;
    result.archive = QStringLiteral("foible");
    result.title = words(random, 40, latin);
    result.summary = words(random, latin ? summaryLength : summaryLength / 2, latin);
    result.category = QStringLiteral("engineering");
    result.era = QString::number(1800 + random() % 220);
    result.locale = QStringLiteral("en");
    if (random() % 2 != 0)
        result.strong = random() % 4 != 0;
    if (random() % 3 == 0)
        result.org = words(random, 20, latin);
    return result;
}

SearchPage page(int count, int summaryLength) {
    std::mt19937 random(1);
    SearchPage result;
    for (int at = 0; at < count; ++at)
        result.items.append(card(random, summaryLength));
    result.total = count;
    result.limit = count;
    return result;
}

} // namespace

SearchPage SampleRecords::shortCards() {
    return page(20000, 240);
}

SearchPage SampleRecords::longCards() {
    return page(2000, 4700);
}

LocalLibrary SampleRecords::library() {
    std::mt19937 random(2);
    LocalLibrary result;
    result.sync.emplace();
    for (int at = 0; at < 4000; ++at) {
        result.saved.append(card(random, 240));
        result.sync->versions.insert(QStringLiteral("saved|") + result.saved.last().key, at);
    }
    for (int at = 0; at < 800; ++at) {
        Conversation conversation;
        conversation.title = words(random, 60);
        conversation.updatedAt = {1700000000000 + at * 60011};
        for (int turn = 0; turn < 6; ++turn) {
            ChatMessage message;
            const bool answer = turn % 2 != 0;
            message.role = answer ? QStringLiteral("assistant") : QStringLiteral("user");
            message.content = words(random, answer ? 1800 : 120);
            if (answer) {
                for (int reference = 0; reference < 3; ++reference)
                    message.references.append(card(random, 240));
            }
            conversation.messages.append(message);
        }
        result.conversations.append(conversation);
    }
    for (int at = 0; at < 20; ++at) {
        LibraryChange change;
        change.kind = QStringLiteral("conversation");
        change.conversation = result.conversations[at];
        change.key = change.conversation->id.text;
        result.sync->pending.append(change);
    }
    return result;
}

LocalLibrary SampleRecords::keptLibrary() {
    std::mt19937 random(3);
    LocalLibrary result;
    result.sync.emplace();
    for (int at = 0; at < 500; ++at) {
        result.saved.append(card(random, 240));
        result.sync->versions.insert(QStringLiteral("saved|") + result.saved.last().key, at);
    }
    for (int at = 0; at < 1000; ++at) {
        Conversation conversation;
        conversation.title = words(random, 60);
        conversation.updatedAt = {1700000000000 + at * 60011};
        for (int turn = 0; turn < 10; ++turn) {
            ChatMessage message;
            const bool answer = turn % 2 != 0;
            message.role = answer ? QStringLiteral("assistant") : QStringLiteral("user");
            message.content = words(random, answer ? 700 : 100);
            if (answer) {
                for (int reference = 0; reference < 2; ++reference)
                    message.references.append(card(random, 160));
            }
            conversation.messages.append(message);
        }
        result.conversations.append(conversation);
    }
    return result;
}
