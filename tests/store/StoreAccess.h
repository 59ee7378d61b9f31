#pragma once

#include "store/AppStore.h"

/// Puts a store into a state that takes a whole login or a sync otherwise.
class StoreAccess final {
public:
    static void setAccount(AppStore &store, const std::optional<QString> &user) {
        std::optional<Account> account;
        if (user) {
            account.emplace();
            account->user.id = *user;
        }
        store.setAccount(account);
    }

    static void setEmail(AppStore &store, const QString &email) {
        store.m_account->user.email = email;
    }

    static void setSyncing(AppStore &store) { store.m_syncing = true; }

    static LocalLibrary &library(AppStore &store) { return store.m_library; }
    static Conversation &chat(AppStore &store) { return store.m_chat; }
    static std::optional<qint64> chatBaseVersion(AppStore &store) {
        return store.m_chatBaseVersion;
    }
    static void setBusy(AppStore &store, bool chatting, bool pinning) {
        store.m_chatting = chatting;
        store.m_pinning = pinning;
    }
    static void setWall(AppStore &store, const QList<WallItem> &wall) { store.m_wall = wall; }
    static void setMutations(AppStore &store, const QSet<QString> &keys) {
        store.m_wallMutations = keys;
    }
    /// No edit starts a synchronisation of its own.
    static void holdSync(AppStore &store) { store.m_syncing = true; }
    static void cancelSync(AppStore &store) { store.cancelSync(); }

    /// Fills every field that belongs to one account alone.
    static void fillAccountFields(AppStore &store) {
        store.m_wall.append(WallItem());
        store.m_wallLoading = true;
        store.m_wallOffline = true;
        store.m_wallError = QStringLiteral("error");
        store.m_wallMutations.insert(QStringLiteral("item"));
        store.m_pinning = true;
        store.m_quota.emplace();
        store.m_openingMembership = true;
        store.m_refreshingAccount = true;
        store.m_requestedCases.insert(QStringLiteral("case"));
        store.m_requestingCases.insert(QStringLiteral("case"));
    }
};
