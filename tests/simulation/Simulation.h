#pragma once

#include "tests/simulation/AccountService.h"
#include "tests/simulation/Device.h"
#include "tests/simulation/Ledger.h"

#include <QTemporaryDir>

#include <vector>

/// One course of several devices with one account, as a seed decides it: edits, crashes, changes of
/// identity and server, and a network that loses, repeats and reorders. In the end everything
/// comes to rest and must agree.
class Simulation final {
public:
    /// The database may serve many simulations, one after the other.
    Simulation(unsigned seed, Database &database);

    /// Gives what was violated, in words; empty when all held.
    QString run();

    /// How many conversations the service kept twice.
    int copies() { return m_service.audit().copies(); }
    const Ledger &ledger() const { return m_ledger; }

    /// What happened last, oldest first.
    const QStringList &trace() const { return m_trace; }

private:
    /// What the service holds in the end.
    struct Held;

    void step();
    void edit(int number);
    void editConversation(AppStore &store, const Conversation &conversation);
    void toggle(int number, const CaseCard &card);
    void changeIdentity(AppStore &store);
    void note(const QString &event);
    void record();

    void signInEverywhere();
    void settleDown();
    void deliverEverything();
    QString check();
    QString checkDevice(const AppStore &store, const Held &held) const;

    Device &device(int number);

    Random m_random;
    QTemporaryDir m_directory;
    AccountService m_service;
    VirtualNetwork m_network;
    std::chrono::milliseconds m_time{0};
    std::vector<std::unique_ptr<Device>> m_devices;
    /// What each device's guest has saved, by library.
    std::vector<QHash<QString, QList<CaseCard>>> m_guests;
    Ledger m_ledger;
    /// For a card that nobody has yet.
    int m_nextCard = 100;
    QStringList m_trace;
};
