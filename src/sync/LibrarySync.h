#pragma once

#include "records/Library.h"

#include <optional>

/// The queue of changes that travels with a library until the service has taken it. A later edit of
/// an item replaces the earlier one and takes the last place. Nobody calls these for a guest;
/// whoever calls them writes the file.
namespace LibrarySync {

enum class CardEdit { saved, removed };

/// Brings a library under synchronisation: the first time, everything that it holds is queued, the
/// cards first. Does nothing for one that is.
void prepare(LocalLibrary &library);

void enqueueCard(const CaseCard &card, CardEdit edit, LocalLibrary &library);

/// The service's version that this machine's state of a conversation builds on; absent for one that
/// the service has not told of. While an edit is queued that is the edit's own base: what another
/// device has done since is not in it, whatever newer version is known.
std::optional<qint64> baseVersion(const Identifier &conversation, const LocalLibrary &library);

/// Without a base version, the edit was made of this machine's state.
void enqueueConversation(const Conversation &conversation, std::optional<qint64> given,
                         LocalLibrary &library);

/// Queues the removal; the list of conversations is left alone.
void deleteConversation(const Conversation &conversation, LocalLibrary &library);

/// Lets the records of the reply that say the same as the library share its data, so that a merged
/// library costs no second copy of what has not changed, and comparing it with what was before costs
/// next to nothing.
void shareUnchanged(const LocalLibrary &library, LibraryReply &reply);

/// Rebuilds the library from the service's reply, with what is still queued laid over it: nothing
/// else that this machine holds survives, except the pin of a conversation. `sent` is the batch
/// that the reply answers; what was edited meanwhile is carried onto the service's new versions.
/// Saved cards end up by title in the system's order, conversations newest first. Where a reply
/// names one item twice, the later record counts. Takes time in proportion to the library.
void reconcile(const LibraryReply &reply, const QList<LibraryChange> &sent, LocalLibrary &library);

} // namespace LibrarySync
