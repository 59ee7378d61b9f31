#include "platform/SecretServiceStore.h"

#include <QPromise>

#include <qcoro/qcorofuture.h>

#include <libsecret/secret.h>
#include <thread>

namespace {

using Outcome = CredentialStore::Outcome;

const SecretSchema schema = {"org.freedesktop.Secret.Generic",
                             SECRET_SCHEMA_NONE,
                             {{"service", SECRET_SCHEMA_ATTRIBUTE_STRING},
                              {"account", SECRET_SCHEMA_ATTRIBUTE_STRING},
                              {nullptr, SECRET_SCHEMA_ATTRIBUTE_STRING}},
                             0,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr,
                             nullptr};

template <class Object>
std::shared_ptr<Object> owned(Object *object) {
    return std::shared_ptr<Object>(object, [](Object *last) {
        if (last)
            g_object_unref(last);
    });
}

/// Of a failed call nothing is kept: its text could hold what is nobody's business.
class Failure final {
public:
    Failure() = default;
    ~Failure() { g_clear_error(&m_error); }
    Q_DISABLE_COPY_MOVE(Failure)

    GError **slot() { return &m_error; }
    explicit operator bool() const { return m_error != nullptr; }

private:
    GError *m_error = nullptr;
};

/// Runs the call on another thread. One that takes longer than the limit is told to end and no
/// longer waited for; its result is absent.
template <class Call>
auto within(std::chrono::milliseconds limit, Call call,
            std::shared_ptr<GCancellable> cancellable = owned(g_cancellable_new()))
    -> std::optional<std::invoke_result_t<Call, GCancellable *>> {
    std::promise<std::invoke_result_t<Call, GCancellable *>> promise;
    auto result = promise.get_future();
    std::thread([call = std::move(call), promise = std::move(promise), cancellable]() mutable {
        promise.set_value(call(cancellable.get()));
    }).detach();
    if (result.wait_for(limit) == std::future_status::ready)
        return result.get();
    g_cancellable_cancel(cancellable.get());
    return std::nullopt;
}

std::shared_ptr<SecretService> serviceOf(GCancellable *cancellable) {
    auto service =
        owned(secret_service_get_sync(SECRET_SERVICE_OPEN_SESSION, cancellable, Failure().slot()));
    // The library would keep a service that has gone.
    if (!service)
        secret_service_disconnect();
    return service;
}

std::shared_ptr<SecretCollection> defaultCollection(SecretService *service,
                                                    GCancellable *cancellable) {
    return owned(secret_collection_for_alias_sync(
        service, SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, cancellable, Failure().slot()));
}

bool hasDefaultCollection(GCancellable *cancellable) {
    const auto bus = owned(g_bus_get_sync(G_BUS_TYPE_SESSION, cancellable, Failure().slot()));
    if (!bus)
        return false;
    // By default the end of the bus would be the end of this process.
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    const auto service = serviceOf(cancellable);
    return service && defaultCollection(service.get(), cancellable);
}

void unlockDefaultCollection(GCancellable *cancellable) {
    const auto service = serviceOf(cancellable);
    const auto collection = service ? defaultCollection(service.get(), cancellable) : nullptr;
    if (!collection || !secret_collection_get_locked(collection.get()))
        return;
    GList objects{collection.get(), nullptr, nullptr};
    secret_service_unlock_sync(service.get(), &objects, cancellable, nullptr, Failure().slot());
}

/// One item's place. Texts are held as the library wants them.
struct Place {
    QByteArray service;
    QByteArray account;

    std::shared_ptr<GHashTable> attributes() const {
        return {secret_attributes_build(&schema, "service", service.constData(), "account",
                                        account.constData(), nullptr),
                g_hash_table_unref};
    }
};

using Items = std::vector<std::shared_ptr<SecretItem>>;

/// Absent when the search failed.
std::optional<Items> search(const Place &place, int flags, GCancellable *cancellable) {
    const auto service = serviceOf(cancellable);
    if (!service)
        return std::nullopt;
    Failure failure;
    const auto list = secret_service_search_sync(
        service.get(), &schema, place.attributes().get(),
        static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | flags), cancellable, failure.slot());
    if (failure) {
        secret_service_disconnect();
        return std::nullopt;
    }
    Items items;
    for (auto entry = list; entry; entry = entry->next)
        items.push_back(owned(static_cast<SecretItem *>(entry->data)));
    g_list_free(list);
    return items;
}

struct Finding {
    bool failed = false;
    std::optional<QByteArray> secret;
};

Finding findItem(const Place &place, GCancellable *cancellable) {
    const auto items = search(place, SECRET_SEARCH_LOAD_SECRETS, cancellable);
    if (!items)
        return {true, std::nullopt};
    for (const auto &item : *items) {
        const auto value =
            secret_item_get_locked(item.get()) ? nullptr : secret_item_get_secret(item.get());
        if (!value)
            continue;
        gsize length = 0;
        const auto *bytes = secret_value_get(value, &length);
        // Never a null array, which would read as none.
        QByteArray secret(bytes ? bytes : "", static_cast<qsizetype>(length));
        secret_value_unref(value);
        return {false, secret};
    }
    return {!items->empty(), std::nullopt};
}

Outcome removeItems(const Place &place, GCancellable *cancellable) {
    const auto items = search(place, 0, cancellable);
    if (!items)
        return Outcome::failed;
    for (const auto &item : *items) {
        // To delete a locked one would make the keyring ask.
        if (secret_item_get_locked(item.get()) ||
            !secret_item_delete_sync(item.get(), cancellable, Failure().slot()))
            return Outcome::failed;
    }
    return items->empty() ? Outcome::notFound : Outcome::done;
}

Outcome addItem(const Place &place, const QByteArray &label, const QByteArray &secret,
                GCancellable *cancellable) {
    const auto service = serviceOf(cancellable);
    const auto collection = service ? defaultCollection(service.get(), cancellable) : nullptr;
    if (!collection || secret_collection_get_locked(collection.get()))
        return Outcome::failed;
    const auto value = secret_value_new(secret.constData(), secret.size(), "text/plain");
    const auto item = owned(secret_item_create_sync(
        collection.get(), &schema, place.attributes().get(), label.constData(), value,
        SECRET_ITEM_CREATE_REPLACE, cancellable, Failure().slot()));
    secret_value_unref(value);
    return item ? Outcome::done : Outcome::failed;
}

Place placeOf(const QString &service, const QString &account) {
    return {service.toUtf8(), account.toUtf8()};
}

} // namespace

SecretServiceStore::SecretServiceStore(QString label, Limits limits)
    : m_label(std::move(label)), m_limits(limits), m_closing(owned(g_cancellable_new())) {}

SecretServiceStore::~SecretServiceStore() {
    g_cancellable_cancel(m_closing.get());
    // Better not to end the process in the middle of its work, but no keyring may keep it from
    // ending.
    if (m_openingEnded.valid())
        m_openingEnded.wait_for(std::chrono::seconds(1));
}

Task<void> SecretServiceStore::prepare() {
    if (!m_opening.isRunning()) {
        QPromise<bool> promise;
        std::promise<void> ended;
        m_closing = owned(g_cancellable_new());
        m_opening = promise.future();
        m_openingEnded = ended.get_future();
        promise.start();
        std::thread([promise = std::move(promise), ended = std::move(ended),
                     limit = m_limits.opening, closing = m_closing]() mutable {
            const bool available = within(limit, hasDefaultCollection, closing).value_or(false);
            if (available)
                unlockDefaultCollection(closing.get());
            promise.addResult(available);
            promise.finish();
            ended.set_value();
        }).detach();
    }
    QFuture<bool> opening = m_opening;
    const bool available = co_await opening;
    m_available = available;
}

/// The window waits for it, so a keyring that hung once is not called again before it has answered
/// to prepare(). What was known stays known: nobody can tell whether the call took effect.
template <class Call>
auto SecretServiceStore::ask(Call call)
    -> std::optional<std::invoke_result_t<Call, _GCancellable *>> {
    if (!m_available)
        return std::nullopt;
    auto result = within(m_limits.call, std::move(call));
    m_available = result.has_value();
    return result;
}

std::optional<QByteArray> SecretServiceStore::find(const QString &service, const QString &account) {
    const std::pair name(service, account);
    const auto known = m_known.constFind(name);
    if (known != m_known.cend())
        return *known;
    const auto finding = ask([place = placeOf(service, account)](GCancellable *cancellable) {
        return findItem(place, cancellable);
    });
    if (!finding || finding->failed)
        return std::nullopt;
    m_known.insert(name, finding->secret);
    return finding->secret;
}

CredentialStore::Outcome SecretServiceStore::remove(const QString &service,
                                                    const QString &account) {
    const auto outcome = ask([place = placeOf(service, account)](GCancellable *cancellable) {
        return removeItems(place, cancellable);
    });
    if (outcome == Outcome::failed)
        m_known.remove({service, account});
    else if (outcome)
        m_known.insert({service, account}, std::nullopt);
    return outcome.value_or(Outcome::failed);
}

CredentialStore::Outcome SecretServiceStore::add(const QString &service, const QString &account,
                                                 const QByteArray &secret) {
    const auto label = QString(m_label + QLatin1String(": ") + account).toUtf8();
    const auto outcome =
        ask([place = placeOf(service, account), label, secret](GCancellable *cancellable) {
            return addItem(place, label, secret, cancellable);
        });
    if (outcome == Outcome::done)
        m_known.insert({service, account}, secret);
    else if (outcome)
        m_known.remove({service, account});
    return outcome.value_or(Outcome::failed);
}
