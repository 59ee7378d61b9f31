// The cards that the user keeps in the library.
#include "store/AppStore.h"
#include "sync/LibrarySync.h"

#include <algorithm>

bool AppStore::saved(const CaseCard &card) const {
    return std::any_of(m_library.saved.begin(), m_library.saved.end(),
                       [&](const CaseCard &kept) { return kept.key == card.key; });
}

void AppStore::toggle(CaseCard card) {
    if (m_account)
        LibrarySync::prepare(m_library);
    const auto kept =
        std::find_if(m_library.saved.cbegin(), m_library.saved.cend(),
                     [&](const CaseCard &candidate) { return candidate.key == card.key; });
    const bool wasSaved = kept != m_library.saved.cend();
    if (wasSaved)
        m_library.saved.erase(kept);
    else
        m_library.saved.prepend(card);
    if (m_account) {
        using Edit = LibrarySync::CardEdit;
        LibrarySync::enqueueCard(card, wasSaved ? Edit::removed : Edit::saved, m_library);
    }
    Q_EMIT libraryChanged();
    persist();
}
