#include "tests/storage/SampleLibrary.h"

using namespace Qt::StringLiterals;

CaseCard SampleLibrary::card(int number) {
    CaseCard card;
    card.id = u"%1"_s.arg(number);
    card.key = u"foible:%1"_s.arg(number);
    card.archive = u"foible"_s;
    card.title = u"A \"bridge\" \\ %1 漢字 \U0001F309"_s.arg(number);
    card.summary = u"Line\nbreak\t and \u0001 control"_s;
    card.category = u"engineering"_s;
    card.era = u"1900s"_s;
    card.locale = u"en"_s;
    if (number % 2 == 0)
        card.strong = number % 4 == 0;
    if (number % 3 == 0)
        card.note = u"note"_s;
    if (number % 5 == 0)
        card.accessKey = u""_s;
    if (number % 7 == 0)
        card.org = u"org"_s;
    return card;
}

Conversation SampleLibrary::conversation(int number, int messages) {
    Conversation conversation;
    conversation.title = u"Conversation %1"_s.arg(number);
    conversation.updatedAt = {1'700'000'000'123 + number};
    for (int turn = 0; turn < messages; ++turn) {
        auto message = ChatMessage::make(turn % 2 == 0 ? ChatMessage::user : ChatMessage::assistant,
                                         u"Turn %1 of %2"_s.arg(turn).arg(number));
        if (turn % 2 != 0) {
            message.references = {card(number), card(number + 1)};
            message.mode = u"evidence-preview"_s;
        }
        conversation.messages.append(message);
    }
    if (number % 2 == 0)
        conversation.archives = QList<QString>{u"foible"_s, u"lumen"_s};
    if (number % 3 == 0)
        conversation.wallID = u"wall-%1"_s.arg(number);
    return conversation;
}

LocalLibrary SampleLibrary::library(int cards, int conversations) {
    LocalLibrary library;
    library.sync.emplace();
    for (int number = 0; number < cards; ++number) {
        library.saved.append(card(number));
        library.sync->versions.insert(u"saved|"_s + library.saved.last().key, number);
    }
    for (int number = 0; number < conversations; ++number)
        library.conversations.append(conversation(number));
    if (conversations > 0) {
        LibraryChange change;
        change.kind = u"conversation"_s;
        change.key = library.conversations.first().id.text;
        change.baseVersion = qint64(1) << 60;
        change.conversation = library.conversations.first();
        library.sync->pending.append(change);
    }
    return library;
}
