#include "LibraryMerge.h"

namespace {

/// Whether whoever made the change had seen what is stored. A device that never got the reply to
/// its last change still names the version before that one, but of course knows what it wrote.
bool hadSeen(const LibraryMerge::Change &change, const LibraryMerge::StoredItem &stored) {
    return change.baseVersion == stored.version ||
           (change.writer == stored.writer && change.baseVersion == stored.baseVersion);
}

} // namespace

LibraryMerge::Decision LibraryMerge::decide(const std::optional<StoredItem> &stored,
                                            const Change &change) {
    if (!stored || stored->deleted)
        return change.deleted ? Decision::Keep : Decision::Write;
    // Nobody may delete what they have not seen.
    if (change.deleted)
        return hadSeen(change, *stored) ? Decision::Write : Decision::Keep;
    if (change.content == stored->content)
        return Decision::Keep;
    // A card holds nothing that its reader has written.
    if (change.kind == Kind::Saved || hadSeen(change, *stored))
        return Decision::Write;
    return Decision::KeepBoth;
}
