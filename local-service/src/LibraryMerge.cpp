#include "LibraryMerge.h"

#include <algorithm>

namespace {

/// Whether whoever made the change had seen what is stored. A device that never got the reply to
/// its last change still names the version before that one, but of course knows what it wrote. That
/// is not so for a change that was on its way for so long that a later one of the same device has
/// overtaken it.
bool hadSeen(const LibraryMerge::Change &change, const LibraryMerge::StoredItem &stored) {
    if (change.baseVersion == stored.version)
        return true;
    const auto &author = stored.author;
    const bool restIsTheirs = change.writer == author.writer &&
                              change.baseVersion >= author.baseVersion &&
                              change.baseVersion < stored.version;
    return restIsTheirs && (change.deleted || change.savedAt >= stored.savedAt);
}

} // namespace

LibraryMerge::Decision LibraryMerge::decide(const std::optional<StoredItem> &stored,
                                            const Change &change) {
    if (!stored || stored->deleted)
        return change.deleted ? Decision::Keep : Decision::Write;
    // Nobody may delete what they have not seen.
    if (change.deleted)
        return hadSeen(change, *stored) ? Decision::Write : Decision::Keep;
    // Saved once more without a new word, nothing can get lost.
    if (change.words == stored->words)
        return change.savedAt > stored->savedAt ? Decision::Write : Decision::Keep;
    // A card holds nothing that its reader has written.
    if (change.kind == Kind::Saved || hadSeen(change, *stored))
        return Decision::Write;
    return Decision::KeepBoth;
}

LibraryMerge::Authorship LibraryMerge::authorAfter(const std::optional<StoredItem> &stored,
                                                   const Change &change) {
    // A removal has no words. Whoever wrote those before it goes on where they were if they bring
    // the item back, be it without having heard of the removal.
    if (stored && change.deleted)
        return stored->author;
    const bool goesOn = stored && stored->author.writer == change.writer;
    return {change.writer,
            goesOn ? std::min(stored->author.baseVersion, change.baseVersion) : change.baseVersion};
}
