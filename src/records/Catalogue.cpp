#include "records/Catalogue.h"

namespace {

template <class Wrapped>
size_t hashMember(const std::optional<Wrapped> &member, size_t seed) {
    return member ? qHashMulti(seed, true, *member) : qHashMulti(seed, false);
}

template <class Member>
size_t hashMember(const Member &member, size_t seed) {
    return qHash(member, seed);
}

/// Takes every field, in table order.
template <CodedRecord Record>
size_t hashFields(const Record &record, size_t seed) {
    forEachField<Record>(
        [&](const auto &field) { seed = hashMember(record.*field.member, seed ^ 0x9e3779b9u); });
    return seed;
}

} // namespace

CaseCard CaseEntry::card() const {
    CaseCard card;
    card.id = id;
    card.key = key;
    card.archive = archive;
    card.title = title;
    card.summary = summary;
    card.category = category;
    card.era = era;
    card.locale = locale;
    return card;
}

size_t qHash(const Archive &archive, size_t seed) {
    return hashFields(archive, seed);
}
size_t qHash(const CaseCard &card, size_t seed) {
    return hashFields(card, seed);
}
size_t qHash(const CaseEntry::Section &section, size_t seed) {
    return hashFields(section, seed);
}
size_t qHash(const CaseEntry::Source &source, size_t seed) {
    return hashFields(source, seed);
}
