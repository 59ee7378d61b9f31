#include "tests/records/RecordTexts.h"

#include "records/Account.h"
#include "records/Library.h"
#include "records/Wall.h"

#include <algorithm>
#include <stdexcept>

namespace {

const std::string archive = R"({"id": "foible", "domain": "foible.example", "title": "Foible",
    "description": "Failures", "accent": "#FFE014", "count": 7000000000})";

const std::string card = R"({"id": "c1", "key": "foible:c1", "archive": "foible",
    "title": "The bridge", "summary": "It swayed.", "category": "engineering", "era": "1940s",
    "locale": "en", "strong?": false, "note?": "weak", "accessKey?": "a/b+c=", "org?": "Roads"})";

const std::string entry = R"({"id": "c1", "key": "foible:c1", "archive": "foible",
    "title": "The bridge", "summary": "It swayed.", "category": "engineering", "era": "1940s",
    "companies": ["Roads", "Works"], "sections": [{"title": "What happened", "body": "Wind."}],
    "sources": [{"title": "Report", "url": "https://example.org/r", "publisher?": "State",
    "date?": "1941"}], "locale": "en", "canonicalUrl": "https://example.org/c1",
    "tradeOut?": "t", "relevance?": "r", "lesson?": "l",
    "hero?": {"url": "https://example.org/h.jpg", "kind?": "photo", "label?": "The span"},
    "related?": [)" + card +
                          R"(], "stage?": "s", "provenance?": "p", "noLaugh?": true,
    "grade?": "A", "year?": 1940})";

const std::string user =
    R"({"id": "u1", "handle": "Ada", "email?": "ada@example.org", "verified?": true})";

const std::string accountRest = R"("user": )" + user + R"(, "plan": "free",
    "subscription?": "monthly", "planExpiresAt?": 1700000000000, "apple?": false)";

const std::string conversation = R"({"id": "6F9619FF-8B86-D011-B42D-00CF4FC964FF",
    "title": "Why?", "messages": [{"id": "11111111-2222-3333-4444-555555555555",
    "role": "user", "content": "Why do bridges sway?", "references": [], "mode?": "m"},
    {"id": "AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE", "role": "assistant", "content": "Wind.",
    "references": [)" + card + R"(]}], "updatedAt": 1700000000123,
    "archives?": ["foible", "lumen"], "wallID?": "w1"})";

const std::string savedChat = R"({"id?": "w1", "lit": ["foible"], "question": "Why?",
    "cases": [{"archive": "foible", "id": "c1", "title": "The bridge", "org?": "Roads",
    "year?": "1940s", "note?": "n", "strong": true, "key?": "a"}],
    "turns": [{"role": "assistant", "content": "Wind."}], "savedAt?": 1700000000000})";

const std::string wallItem = R"({"id": "w1", "kind": "save", "site?": "foible", "caseId?": "c1",
    "title?": "t", "body?": "b", "url?": "https://example.org", "card?": {"meta?": "1940s",
    "title?": "t", "problem?": "p", "highlight?": "h"}, "createdAt": 1700000000000})";

const std::string change = R"({"opId": "6F9619FF-8B86-D011-B42D-00CF4FC964FF",
    "kind": "saved", "key": "foible:c1", "baseVersion": 0, "deleted": false,
    "card?": )" + card + R"(, "conversation?": )" +
                           conversation + "}";

const std::string reply = R"({"revision": 12, "records": [{"kind": "saved", "key": "foible:c1",
    "version": 3, "deleted": true, "card?": )" +
                          card + R"(, "conversation?": )" + conversation +
                          R"(}], "accepted?": ["op1", "op2"],
    "conflicts?": [{"originalKey": "o", "preservedKey": "p"}],
    "acceptedVersions?": [{"opId": "a", "version": 9007199254740993}]})";

const std::string library =
    R"({"saved": [)" + card + R"(], "conversations": [)" + conversation +
    R"(], "sync?": {"versions": {"saved|foible:c1*": 9007199254740993, "*": 1},
    "pending": [)" +
    change + "]}}";

template <class Record>
QByteArray recode(const QByteArray &text, DateForm dates) {
    return Json::encode(Json::decode<Record>(text, dates), dates);
}

std::string items(const std::string &element) {
    return R"({"items": [)" + element + "]}";
}

} // namespace

QByteArray RecordText::text() const {
    auto text = QByteArray::fromStdString(annotated);
    return text.replace("?\":", "\":").replace("*\":", "\":");
}

std::ostream &operator<<(std::ostream &stream, const RecordText &record) {
    return stream << record.name;
}

const std::vector<RecordText> &recordTexts() {
    static const std::vector<RecordText> all = {
        {"Archive", archive, recode<Archive>},
        {"CaseCard", card, recode<CaseCard>},
        {"CaseEntry", entry, recode<CaseEntry>},
        {"SearchPage",
         R"({"items": [)" + card + R"(], "total": 70, "hasMore": true, "offset": 20, "limit": 20})",
         recode<SearchPage>},
        {"ArchiveItems", items(archive), recode<Items<Archive>>},
        {"TextItems", items(R"("engineering", "")"), recode<Items<QString>>},
        {"Health",
         R"({"ok": false, "environment": "local", "chatMode": "preview",
             "accountUrl": "https://example.org", "total": 350})",
         recode<Health>},
        {"Facets", R"({"categories": ["engineering"], "years": [1940, -44], "decades": ["1940"]})",
         recode<Facets>},
        {"Account", "{" + accountRest + "}", recode<Account>},
        {"Login", R"({"token": "t", )" + accountRest + "}", recode<Login>},
        {"Quota", R"({"plan": "free", "used": 3, "limit": 10})", recode<Quota>},
        {"ChatEvent", R"({"type": "delta", "text?": "W", "items?": [)" + card + R"(], "mode?": "m",
             "message?": "x", "archive?": "foible", "stage?": "s", "summary?": "y"})",
         recode<ChatEvent>},
        {"Conversation", conversation, recode<Conversation>},
        {"SavedChat", savedChat, recode<SavedChat>},
        {"WallItem", wallItem, recode<WallItem>},
        {"WallItems", items(wallItem), recode<Items<WallItem>>},
        {"LibraryUpload", R"({"changes": [)" + change + "]}", recode<LibraryUpload>},
        {"LibraryReply", reply, recode<LibraryReply>},
        {"LocalLibrary", library, recode<LocalLibrary>},
    };
    return all;
}

const RecordText &recordText(std::string_view name) {
    const auto &all = recordTexts();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const RecordText &record) { return record.name == name; });
    if (found == all.end())
        throw std::logic_error("no such record");
    return *found;
}
