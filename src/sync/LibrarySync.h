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

/// Without a base version, the edit was made against the newest version that is known.
void enqueueConversation(const Conversation &conversation, std::optional<qint64> baseVersion,
                         LocalLibrary &library);

/// Queues the removal; the list of conversations is left alone.
void deleteConversation(const Conversation &conversation, LocalLibrary &library);

/// Rebuilds the library from the service's reply, with what is still queued laid over it: nothing
/// else that this machine holds survives, except the pin of a conversation. `sent` is the batch
/// that the reply answers; what was edited meanwhile is carried onto the service's new versions.
/// Saved cards end up by title in the system's order, conversations newest first. Where a reply
/// names one item twice, the later record counts. Takes time in proportion to the library.
void reconcile(const LibraryReply &reply, const QList<LibraryChange> &sent, LocalLibrary &library);

} // namespace LibrarySync
