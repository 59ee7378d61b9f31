#include "storage/LibraryEncoder.h"

#include "records/Json.h"
#include "sync/LibrarySync.h"
#include "tests/storage/SampleLibrary.h"

#include <gtest/gtest.h>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr auto dates = DateForm::secondsSince2001;

/// Edits of every kind, also such as no screen offers.
class RandomEditor final {
public:
    explicit RandomEditor(unsigned seed) : m_random(seed) {}

    void edit(LocalLibrary &library) {
        auto &saved = library.saved;
        auto &conversations = library.conversations;
        switch (m_random() % 16) {
        case 0:
            saved.prepend(SampleLibrary::card(number()));
            break;
        case 1:
            if (!saved.isEmpty())
                saved.removeAt(index(saved));
            break;
        case 2:
            if (!saved.isEmpty())
                change(saved[index(saved)]);
            break;
        case 3:
            if (!saved.isEmpty())
                saved.move(index(saved), 0);
            break;
        case 4:
            conversations.prepend(SampleLibrary::conversation(number(), number() % 5));
            break;
        case 5:
            if (!conversations.isEmpty())
                conversations.removeAt(index(conversations));
            break;
        case 6:
            if (!conversations.isEmpty())
                conversations.move(index(conversations), index(conversations));
            break;
        case 7:
            if (!conversations.isEmpty())
                change(conversations[index(conversations)]);
            break;
        case 8:
            // The same identity twice: no kept text may stand in for the other.
            if (!conversations.isEmpty()) {
                auto twin = conversations[index(conversations)];
                change(twin);
                conversations.append(twin);
            }
            break;
        case 9:
            LibrarySync::prepare(library);
            break;
        case 10:
            if (!saved.isEmpty()) {
                const auto edit = m_random() % 2 == 0 ? LibrarySync::CardEdit::saved
                                                      : LibrarySync::CardEdit::removed;
                LibrarySync::enqueueCard(saved[index(saved)], edit, library);
            }
            break;
        case 11:
            if (!conversations.isEmpty())
                LibrarySync::enqueueConversation(conversations[index(conversations)], {}, library);
            break;
        case 12:
            if (library.sync && !library.sync->pending.isEmpty())
                library.sync->pending[index(library.sync->pending)].baseVersion = number();
            break;
        case 13:
            if (library.sync)
                library.sync->versions[u"saved|%1"_s.arg(number() % 5)] = number();
            break;
        case 14:
            // As after a reply: everything equal, nothing shared.
            library = Json::decode<LocalLibrary>(Json::encode(library, dates), dates);
            break;
        case 15:
            if (m_random() % 8 == 0)
                library = m_random() % 2 == 0 ? LocalLibrary() : SampleLibrary::library(5, 5);
            break;
        }
    }

private:
    int number() { return static_cast<int>(m_random() % 100); }

    template <class List>
    qsizetype index(const List &list) {
        return static_cast<qsizetype>(m_random() % static_cast<size_t>(list.size()));
    }

    void change(CaseCard &card) {
        switch (m_random() % 4) {
        case 0:
            card.title += u"+"_s;
            break;
        case 1:
            card.strong = m_random() % 2 == 0;
            break;
        case 2:
            card.note.reset();
            break;
        default:
            card.key += u"!"_s;
        }
    }

    void change(Conversation &conversation) {
        switch (m_random() % 6) {
        case 0:
            conversation.title += u"+"_s;
            break;
        case 1:
            conversation.updatedAt.milliseconds += 1;
            break;
        case 2:
            conversation.messages.append(ChatMessage());
            break;
        case 3:
            if (!conversation.messages.isEmpty())
                conversation.messages.last().content += u" grows"_s;
            break;
        case 4:
            if (!conversation.messages.isEmpty() &&
                !conversation.messages.last().references.isEmpty())
                change(conversation.messages.last().references.first());
            break;
        default:
            conversation.archives = QList<QString>{u"shift"_s};
        }
    }

    std::mt19937 m_random;
};

} // namespace

TEST(LibraryEncoder, keptTextsAreNeverWrong) {
    for (unsigned seed = 1; seed <= 15; ++seed) {
        RandomEditor editor(seed);
        LibraryEncoder encoder;
        auto library = SampleLibrary::library(4, 4);
        for (int round = 0; round < 120; ++round) {
            const auto text = encoder.encode(library).join();
            // Only the order of the versions may differ from an encoding of the whole.
            ASSERT_EQ(text.size(), Json::encode(library, dates).size()) << seed << " " << round;
            ASSERT_EQ(Json::decode<LocalLibrary>(text, dates), library) << seed << " " << round;
            for (auto edits = round % 4; edits >= 0; --edits)
                editor.edit(library);
        }
    }
}

TEST(LibraryEncoder, anEditEncodesNothingElseAgain) {
    LibraryEncoder encoder;
    auto library = SampleLibrary::library(50, 50);
    const auto before = encoder.encode(library);
    library.conversations.move(20, 0);
    library.conversations.first().title = u"renamed"_s;
    library.saved.prepend(SampleLibrary::card(99));
    LibrarySync::enqueueConversation(library.conversations.first(), {}, library);
    const auto after = encoder.encode(library);

    QSet<const char *> kept;
    for (const auto &piece : before)
        kept.insert(piece.constData());
    QList<QByteArray> fresh;
    for (const auto &piece : after) {
        if (!kept.contains(piece.constData()))
            fresh.append(piece);
    }
    // The card, the conversation, its change, and those that got or lost the bracket before them.
    EXPECT_LE(fresh.size(), 6);
    EXPECT_EQ(after.join(), Json::encode(library, dates));

    const auto again = encoder.encode(library);
    EXPECT_EQ(again.join(), after.join());
}
