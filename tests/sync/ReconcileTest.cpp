#include "sync/LibrarySync.h"
#include "tests/storage/SampleLibrary.h"

#include <QLocale>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using LibrarySync::CardEdit;

namespace {

LibraryRecord record(const CaseCard &card, qint64 version) {
    return {u"saved"_s, card.key, version, false, card, {}};
}

LibraryRecord record(const Conversation &conversation, qint64 version) {
    return {u"conversation"_s, conversation.id.text, version, false, {}, conversation};
}

LibraryRecord tombstone(LibraryRecord live) {
    live.deleted = true;
    return live;
}

LibraryReply reply(const QList<LibraryRecord> &records, const QList<LibraryChange> &accepted = {}) {
    LibraryReply result;
    result.records = records;
    result.accepted.emplace();
    for (const auto &change : accepted)
        result.accepted->append(change.opId.text);
    return result;
}

CaseCard titled(int number, const QString &title) {
    auto card = SampleLibrary::card(number);
    card.title = title;
    return card;
}

/// A conversation that is queued twice: the earlier change was sent, the later one was made since.
class EditedWhileSending : public testing::Test {
protected:
    void SetUp() override {
        LibrarySync::enqueueConversation(conversation, 3, library);
        sent = library.sync->pending;
        conversation.title = u"edited since"_s;
        library.conversations = {conversation};
        LibrarySync::enqueueConversation(conversation, 3, library);
    }

    const LibraryChange &queued() const { return library.sync->pending.first(); }

    LocalLibrary library;
    Conversation conversation = SampleLibrary::conversation(1);
    QList<LibraryChange> sent;
    Identifier preserved = Identifier::make();
};

} // namespace

TEST(Reconcile, theReplyIsTheWholeLibraryAndTheQueueLiesOverIt) {
    LocalLibrary library = SampleLibrary::library(2, 2);
    library.sync.emplace();
    const auto shown = titled(10, u"in the reply"_s);
    const auto hidden = titled(11, u"removed here"_s);
    const auto added = titled(12, u"added here"_s);
    const auto kept = SampleLibrary::conversation(10);
    const auto removed = SampleLibrary::conversation(11);
    auto renamed = SampleLibrary::conversation(12);
    const auto before = renamed;
    renamed.title = u"renamed here"_s;
    LibrarySync::enqueueCard(hidden, CardEdit::removed, library);
    LibrarySync::enqueueCard(added, CardEdit::saved, library);
    LibrarySync::deleteConversation(removed, library);
    LibrarySync::enqueueConversation(renamed, {}, library);
    const auto queue = library.sync->pending;

    LibrarySync::reconcile(reply({record(shown, 1), record(hidden, 2), record(kept, 3),
                                  record(removed, 4), record(before, 5)}),
                           queue, library);
    EXPECT_EQ(library.saved, (QList<CaseCard>{added, shown}));
    EXPECT_EQ(library.conversations.size(), 2);
    EXPECT_TRUE(library.conversations.contains(kept));
    EXPECT_TRUE(library.conversations.contains(renamed));
    EXPECT_EQ(library.sync->pending, queue);
    EXPECT_EQ(library.sync->versions.size(), 5);

    LibrarySync::reconcile(reply({}, queue), queue, library);
    EXPECT_EQ(library.saved, QList<CaseCard>());
    EXPECT_EQ(library.conversations, QList<Conversation>());
    EXPECT_EQ(library.sync, LibrarySyncState());
}

TEST(Reconcile, withoutAListOfAcceptedChangesTheQueueStays) {
    LocalLibrary library;
    LibrarySync::enqueueCard(titled(1, u"a"_s), CardEdit::saved, library);
    const auto queue = library.sync->pending;
    LibraryReply answer = reply({record(titled(2, u"b"_s), 4)});
    answer.accepted.reset();
    LibrarySync::reconcile(answer, queue, library);
    EXPECT_EQ(library.sync->pending, queue);
    EXPECT_EQ(library.saved.size(), 2);
    EXPECT_EQ(library.sync->versions.size(), 1);
}

TEST(Reconcile, aTombstoneLeavesAVersionForALaterSave) {
    LocalLibrary library;
    const auto card = titled(1, u"a"_s);
    LibrarySync::reconcile(reply({tombstone(record(card, 8))}), {}, library);
    EXPECT_TRUE(library.saved.isEmpty());
    LibrarySync::enqueueCard(card, CardEdit::saved, library);
    EXPECT_EQ(library.sync->pending.first().baseVersion, 8);
}

TEST_F(EditedWhileSending, aLaterEditClaimsNoMoreThanTheAcceptedChangeHasMade) {
    auto another = *sent.first().conversation;
    another.title = u"since then, elsewhere"_s;
    auto answer = reply({record(another, 10)}, sent);
    answer.acceptedVersions = {{sent.first().opId.text, 9}};
    LibrarySync::reconcile(answer, sent, library);
    EXPECT_EQ(queued().baseVersion, 9);
    EXPECT_EQ(library.sync->versions.value(sent.first().identity()), 10);
}

TEST_F(EditedWhileSending, aLaterEditIsCarriedOntoTheAcceptedVersion) {
    const auto later = queued();
    LibrarySync::reconcile(reply({record(*sent.first().conversation, 4)}, sent), sent, library);
    auto carried = later;
    carried.baseVersion = 4;
    EXPECT_EQ(queued(), carried);
    EXPECT_EQ(library.conversations, QList<Conversation>{conversation});
}

TEST_F(EditedWhileSending, anEditWhoseEarlierStateWasNotTakenStaysAsItIs) {
    const auto later = queued();
    struct Row {
        LibraryReply answer;
        QList<LibraryChange> batch;
    };
    const auto records = QList{record(*sent.first().conversation, 9)};
    for (const auto &row : {Row{reply(records), sent}, Row{reply(records, sent), {}}}) {
        auto copy = library;
        LibrarySync::reconcile(row.answer, row.batch, copy);
        EXPECT_EQ(copy.sync->pending, QList<LibraryChange>{later});
    }
}

TEST_F(EditedWhileSending, aLaterEditFollowsThePreservedCopy) {
    auto winner = conversation;
    winner.title = u"of another device"_s;
    auto copy = *sent.first().conversation;
    copy.id = preserved;
    auto answer = reply({record(winner, 4), record(copy, 1)}, sent);
    // The first conflict of a key counts, and a key in lower case is brought to the one form.
    answer.conflicts = {{conversation.id.text, preserved.text.toLower()},
                        {conversation.id.text, Identifier::make().text}};
    LibrarySync::reconcile(answer, sent, library);
    EXPECT_EQ(queued().key, preserved.text);
    EXPECT_EQ(queued().conversation->id, preserved);
    EXPECT_EQ(queued().baseVersion, 1);
    ASSERT_EQ(library.conversations.size(), 2);
    for (const auto &entry : std::as_const(library.conversations))
        EXPECT_EQ(entry.title, entry.id == preserved ? u"edited since"_s : winner.title);
}

TEST_F(EditedWhileSending, aConflictThatNamesNoUsableCopyOnlyRebases) {
    for (const auto &conflict : {LibraryConflict{conversation.id.text, u"no identifier"_s},
                                 LibraryConflict{Identifier::make().text, preserved.text}}) {
        auto copy = library;
        auto answer = reply({record(*sent.first().conversation, 6)}, sent);
        answer.conflicts = {conflict};
        LibrarySync::reconcile(answer, sent, copy);
        EXPECT_EQ(copy.sync->pending.first().key, conversation.id.text);
        EXPECT_EQ(copy.sync->pending.first().baseVersion, 6);
    }
}

TEST(Reconcile, aCardIsNeverMovedByAConflict) {
    LocalLibrary library;
    auto card = titled(1, u"a"_s);
    card.key = Identifier::make().text;
    LibrarySync::enqueueCard(card, CardEdit::saved, library);
    const auto sent = library.sync->pending;
    LibrarySync::enqueueCard(card, CardEdit::removed, library);
    auto answer = reply({record(card, 2)}, sent);
    answer.conflicts = {{card.key, Identifier::make().text}};
    LibrarySync::reconcile(answer, sent, library);
    EXPECT_EQ(library.sync->pending.first().key, card.key);
    EXPECT_EQ(library.sync->pending.first().baseVersion, 2);
    EXPECT_TRUE(library.saved.isEmpty());
}

TEST(Reconcile, aPinIsKeptUnlessTheServiceKnowsOne) {
    auto local = SampleLibrary::conversation(1);
    local.wallID = u"here"_s;
    for (const bool known : {false, true}) {
        LocalLibrary library;
        library.conversations = {local};
        auto remote = local;
        remote.wallID = known ? std::optional(u"there"_s) : std::nullopt;
        LibrarySync::reconcile(reply({record(remote, 1)}), {}, library);
        EXPECT_EQ(library.conversations.first().wallID, known ? u"there"_s : u"here"_s);
    }
}

TEST(Reconcile, cardsStandByTitleAndConversationsNewestFirst) {
    const QLocale system;
    QLocale::setDefault(QLocale::French);
    LocalLibrary library;
    QList<LibraryRecord> records;
    for (const auto &title : {u"b"_s, u"C"_s, u"a"_s, u"B"_s, u"É"_s, u"f"_s})
        records.append(record(titled(static_cast<int>(records.size()), title), 1));
    for (const int day : {2, 3, 1}) {
        auto conversation = SampleLibrary::conversation(day);
        conversation.updatedAt.milliseconds = day;
        records.append(record(conversation, 1));
    }
    LibrarySync::reconcile(reply(records), {}, library);
    QLocale::setDefault(system);
    QStringList titles;
    for (const auto &card : std::as_const(library.saved))
        titles.append(card.title.toLower());
    EXPECT_EQ(titles, (QStringList{u"a"_s, u"b"_s, u"b"_s, u"c"_s, u"é"_s, u"f"_s}));
    for (qint64 place = 0; place < 3; ++place)
        EXPECT_EQ(library.conversations[place].updatedAt.milliseconds, 3 - place);
}

TEST(Reconcile, inAReplyThatNamesAnItemTwiceTheLaterRecordCounts) {
    LocalLibrary library;
    const auto twice = SampleLibrary::conversation(1);
    auto later = twice;
    later.title = u"later"_s;
    const auto gone = titled(2, u"gone"_s);
    const auto other = titled(3, u"other"_s);
    LibrarySync::reconcile(reply({record(gone, 1), record(twice, 1), record(later, 2),
                                  tombstone(record(gone, 2)), record(other, 1)}),
                           {}, library);
    EXPECT_EQ(library.conversations, QList<Conversation>{later});
    EXPECT_EQ(library.saved, QList<CaseCard>{other});
    EXPECT_EQ(library.sync->versions.value(u"saved|"_s + gone.key), 2);
}

TEST(Reconcile, aRemovalUnderNoIdentifierRemovesNothing) {
    LocalLibrary library;
    const auto conversation = SampleLibrary::conversation(1);
    LibrarySync::deleteConversation(conversation, library);
    library.sync->pending.first().key = u"no identifier"_s;
    LibrarySync::reconcile(reply({record(conversation, 1)}), {}, library);
    EXPECT_EQ(library.conversations.size(), 1);
}
