#include "sync/LibrarySync.h"

#include "tests/storage/SampleLibrary.h"

#include <QSet>

#include <gtest/gtest.h>
#include <random>

using namespace Qt::StringLiterals;
using LibrarySync::CardEdit;

namespace {

QStringList identities(const LocalLibrary &library) {
    QStringList result;
    for (const auto &change : library.sync->pending)
        result.append(change.identity());
    return result;
}

QString identity(const CaseCard &card) {
    return u"saved|"_s + card.key;
}

QString identity(const Conversation &conversation) {
    return u"conversation|"_s + conversation.id.text;
}

LocalLibrary unsynchronised(int cards, int conversations) {
    auto library = SampleLibrary::library(cards, conversations);
    library.sync.reset();
    return library;
}

} // namespace

TEST(LibrarySync, aCardsChangeCarriesTheCardUnlessItIsRemoved) {
    LocalLibrary library;
    auto card = SampleLibrary::card(1);
    card.id = u"another than its key"_s;
    LibrarySync::enqueueCard(card, CardEdit::removed, library);
    const auto unknown = library.sync->pending.first();
    EXPECT_TRUE(unknown.deleted);
    EXPECT_EQ(unknown.baseVersion, 0);
    EXPECT_FALSE(unknown.card || unknown.conversation);

    library.sync->versions[u"saved|"_s + card.key] = 7;
    library.sync->versions[u"saved|"_s + card.id] = 8;
    LibrarySync::enqueueCard(card, CardEdit::saved, library);
    ASSERT_EQ(library.sync->pending.size(), 1);
    const auto known = library.sync->pending.first();
    EXPECT_EQ(known.kind, u"saved"_s);
    EXPECT_EQ(known.key, card.key);
    EXPECT_EQ(known.baseVersion, 7);
    EXPECT_FALSE(known.deleted);
    EXPECT_EQ(known.card, card);
    EXPECT_FALSE(known.conversation);
    EXPECT_NE(known.opId, unknown.opId);
    EXPECT_EQ(Identifier::parse(known.opId.text), known.opId);
    EXPECT_TRUE(library.saved.isEmpty());
}

TEST(LibrarySync, aConversationsBaseIsTheGivenOneElseTheKnownOne) {
    struct Row {
        std::optional<qint64> known;
        std::optional<qint64> given;
        qint64 base;
    };
    for (const auto &row :
         {Row{{}, {}, 0}, Row{5, {}, 5}, Row{5, 0, 0}, Row{5, 3, 3}, Row{{}, 4, 4}}) {
        LocalLibrary library;
        const auto conversation = SampleLibrary::conversation(1);
        if (row.known) {
            library.sync.emplace().versions[identity(conversation)] = *row.known;
        }
        LibrarySync::enqueueConversation(conversation, row.given, library);
        const auto change = library.sync->pending.first();
        EXPECT_EQ(change.baseVersion, row.base);
        EXPECT_EQ(change.identity(), identity(conversation));
        EXPECT_EQ(change.conversation, conversation);
        EXPECT_FALSE(change.card || change.deleted);

        LibrarySync::deleteConversation(conversation, library);
        ASSERT_EQ(library.sync->pending.size(), 1);
        const auto removal = library.sync->pending.first();
        EXPECT_EQ(removal.baseVersion, row.base) << "that of the edit it replaces";
        EXPECT_EQ(removal.identity(), identity(conversation));
        EXPECT_TRUE(removal.deleted);
        EXPECT_FALSE(removal.card || removal.conversation);
        EXPECT_NE(removal.opId, change.opId);
    }
}

TEST(LibrarySync, theFirstTimeEverythingIsQueuedTheCardsFirst) {
    auto library = unsynchronised(3, 2);
    const auto before = library;
    LibrarySync::prepare(library);
    EXPECT_EQ(identities(library),
              (QStringList{identity(before.saved[0]), identity(before.saved[1]),
                           identity(before.saved[2]), identity(before.conversations[0]),
                           identity(before.conversations[1])}));
    EXPECT_TRUE(library.sync->versions.isEmpty());
    EXPECT_EQ(library.saved, before.saved);
    EXPECT_EQ(library.conversations, before.conversations);
    for (const auto &change : library.sync->pending) {
        EXPECT_EQ(change.baseVersion, 0);
        EXPECT_FALSE(change.deleted);
        EXPECT_NE(change.card.has_value(), change.conversation.has_value());
    }

    const auto prepared = library;
    LibrarySync::prepare(library);
    EXPECT_EQ(library, prepared);

    LocalLibrary empty = before;
    empty.sync.emplace();
    LibrarySync::prepare(empty);
    EXPECT_TRUE(empty.sync->pending.isEmpty());
}

TEST(LibrarySync, aRepeatedItemIsQueuedOnceWithItsLastStateInTheLastPlace) {
    auto library = unsynchronised(3, 0);
    auto twin = library.saved.first();
    twin.title = u"later"_s;
    library.saved.append(twin);
    LibrarySync::prepare(library);
    EXPECT_EQ(identities(library), (QStringList{identity(library.saved[1]),
                                                identity(library.saved[2]), identity(twin)}));
    EXPECT_EQ(library.sync->pending.last().card->title, u"later"_s);
}

TEST(LibrarySync, aLargeLibraryIsQueuedWithoutASearchForEachItem) {
    // A quadratic way takes minutes under the sanitizers.
    auto library = unsynchronised(20'000, 0);
    LibrarySync::prepare(library);
    EXPECT_EQ(library.sync->pending.size(), 20'000);
}

TEST(LibrarySync, anyEditsLeaveOneChangeForEachItemInTheOrderOfTheirLastEdit) {
    for (unsigned seed = 1; seed <= 50; ++seed) {
        std::mt19937 random(seed);
        LocalLibrary library;
        QList<Conversation> conversations;
        for (int number = 0; number < 5; ++number)
            conversations.append(SampleLibrary::conversation(number));
        QStringList expected;
        QSet<QString> operations;
        for (int edit = 0; edit < 100; ++edit) {
            const auto at = static_cast<int>(random() % 5);
            QString edited;
            bool deleted = false;
            switch (random() % 4) {
            case 0:
            case 1:
                deleted = random() % 2 == 0;
                LibrarySync::enqueueCard(SampleLibrary::card(at),
                                         deleted ? CardEdit::removed : CardEdit::saved, library);
                edited = identity(SampleLibrary::card(at));
                break;
            case 2:
                conversations[at].title += u"+"_s;
                LibrarySync::enqueueConversation(conversations[at], {}, library);
                edited = identity(conversations[at]);
                break;
            case 3:
                deleted = true;
                LibrarySync::deleteConversation(conversations[at], library);
                edited = identity(conversations[at]);
                break;
            }
            expected.removeAll(edited);
            expected.append(edited);
            ASSERT_EQ(identities(library), expected) << seed << " " << edit;
            const auto &last = library.sync->pending.last();
            ASSERT_EQ(last.deleted, deleted);
            ASSERT_NE(last.deleted, last.card || last.conversation);
            if (last.conversation) {
                ASSERT_EQ(last.conversation, conversations[at]);
            }
            ASSERT_FALSE(operations.contains(last.opId.text));
            operations.insert(last.opId.text);
        }
    }
}
