#include "storage/LibraryEncoder.h"

#include "records/Json.h"
#include "sync/LibrarySync.h"
#include "tests/storage/SampleLibrary.h"

#include <functional>
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
        const std::function<void()> edits[] = {
            [&] { saved.prepend(SampleLibrary::card(number())); },
            [&] { conversations.prepend(SampleLibrary::conversation(number(), number() % 5)); },
            [&] { LibrarySync::prepare(library); },
            // As after a reply: everything equal, nothing shared.
            [&] { library = Json::decode<LocalLibrary>(Json::encode(library, dates), dates); },
            [&] {
                if (number() < 12)
                    library = number() < 50 ? LocalLibrary() : SampleLibrary::library(5, 5);
            },
            [&] {
                if (library.sync)
                    library.sync->versions[u"saved|%1"_s.arg(number() % 5)] = number();
            },
            [&] {
                if (library.sync && !library.sync->pending.isEmpty())
                    any(library.sync->pending).baseVersion = number();
            },
            // From here on with a card or a conversation that is there.
            [&] { saved.removeAt(index(saved)); },
            [&] { change(any(saved)); },
            [&] { saved.move(index(saved), 0); },
            [&] {
                const auto edit =
                    number() < 50 ? LibrarySync::CardEdit::saved : LibrarySync::CardEdit::removed;
                LibrarySync::enqueueCard(any(saved), edit, library);
            },
            [&] { conversations.removeAt(index(conversations)); },
            [&] { conversations.move(index(conversations), index(conversations)); },
            [&] { change(any(conversations)); },
            // The same identity twice: no kept text may stand in for the other.
            [&] {
                conversations.append(any(conversations));
                change(conversations.last());
            },
            [&] { LibrarySync::enqueueConversation(any(conversations), {}, library); },
        };
        const auto at = m_random() % std::size(edits);
        if (at < 7 || (at < 11 ? !saved.isEmpty() : !conversations.isEmpty()))
            edits[at]();
    }

private:
    int number() { return static_cast<int>(m_random() % 100); }

    template <class List>
    qsizetype index(const List &list) {
        return static_cast<qsizetype>(m_random() % static_cast<size_t>(list.size()));
    }
    template <class List>
    typename List::reference any(List &list) {
        return list[index(list)];
    }

    void change(CaseCard &card) {
        const std::function<void()> changes[] = {
            [&] { card.title += u"+"_s; }, [&] { card.strong = number() < 50; },
            [&] { card.note.reset(); }, [&] { card.key += u"!"_s; }};
        changes[m_random() % std::size(changes)]();
    }

    void change(Conversation &conversation) {
        auto &messages = conversation.messages;
        const std::function<void()> changes[] = {
            [&] { conversation.title += u"+"_s; },
            [&] { conversation.updatedAt.milliseconds += 1; },
            [&] { messages.append(ChatMessage()); },
            [&] { conversation.archives = QList<QString>{u"shift"_s}; },
            [&] {
                if (!messages.isEmpty())
                    messages.last().content += u" grows"_s;
            },
            [&] {
                if (!messages.isEmpty() && !messages.last().references.isEmpty())
                    change(messages.last().references.first());
            }};
        changes[m_random() % std::size(changes)]();
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
