#pragma once

#include "copy/Words.h"
#include "platform/Platform.h"
#include "platform/Task.h"
#include "records/Account.h"
#include "records/AppLanguage.h"
#include "records/Catalogue.h"
#include "records/Library.h"
#include "records/Wall.h"
#include "service/API.h"
#include "signin/GoogleSignIn.h"
#include "storage/LibraryEncoder.h"
#include "store/ArchiveModel.h"
#include "store/FramePace.h"
#include "store/Marker.h"
#include "store/MessageModel.h"

#include <QJsonObject>
#include <QObject>
#include <QSet>
#include <QUrl>

#include <chrono>
#include <exception>
#include <optional>
#include <stop_token>
#include <type_traits>

/// The one state of the program: everything that more than one screen sees. Made once, kept to the
/// process's end, used on the main thread only. Screens read its properties and call its
/// operations.
///
/// An operation that waits is a Task for other code, and a `begin...` call for a screen, which
/// starts it and returns at once.
class AppStore final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString baseString READ baseString NOTIFY baseStringChanged FINAL)
    Q_PROPERTY(QAbstractListModel *archives READ archiveModel CONSTANT FINAL)
    Q_PROPERTY(double archiveTotal READ archiveTotal NOTIFY archivesChanged FINAL)
    Q_PROPERTY(Archive lead READ lead NOTIFY archivesChanged FINAL)
    Q_PROPERTY(bool connected READ isConnected NOTIFY healthChanged FINAL)
    Q_PROPERTY(Health health READ healthRecord NOTIFY healthChanged FINAL)
    Q_PROPERTY(bool signedIn READ isSignedIn NOTIFY accountChanged FINAL)
    /// The login is kept in a private file, since no keyring answers.
    Q_PROPERTY(bool credentialsInFile READ areCredentialsInFile NOTIFY connectingChanged FINAL)
    Q_PROPERTY(Account account READ accountRecord NOTIFY accountChanged FINAL)
    Q_PROPERTY(bool authenticating READ isAuthenticating NOTIFY authenticatingChanged FINAL)
    Q_PROPERTY(bool googleAuthenticating READ isGoogleAuthenticating NOTIFY
                   googleAuthenticatingChanged FINAL)
    Q_PROPERTY(bool googleAvailable READ isGoogleAvailable NOTIFY baseStringChanged FINAL)
    Q_PROPERTY(
        QString destination READ destination WRITE setDestination NOTIFY destinationChanged FINAL)
    Q_PROPERTY(
        QString language READ languageValue WRITE setLanguageValue NOTIFY languageChanged FINAL)
    Q_PROPERTY(Words words READ words NOTIFY wordsChanged FINAL)
    Q_PROPERTY(QStringList selectedArchives READ selectedArchives WRITE setSelectedArchives NOTIFY
                   selectedArchivesChanged FINAL)
    Q_PROPERTY(
        double readingSize READ readingSize WRITE setReadingSize NOTIFY readingSizeChanged FINAL)
    Q_PROPERTY(QString notice READ noticeText NOTIFY noticeChanged FINAL)
    Q_PROPERTY(bool connecting READ isConnecting NOTIFY connectingChanged FINAL)
    Q_PROPERTY(QString libraryKey READ libraryKey NOTIFY libraryKeyChanged FINAL)
    Q_PROPERTY(QAbstractListModel *messages READ messageModel CONSTANT FINAL)
    Q_PROPERTY(int messageCount READ messageCount NOTIFY chatChanged FINAL)
    Q_PROPERTY(QString chatTitle READ chatTitle NOTIFY chatChanged FINAL)
    Q_PROPERTY(bool chatPinned READ isChatPinned NOTIFY chatChanged FINAL)
    Q_PROPERTY(bool chatting READ isChatting NOTIFY chattingChanged FINAL)
    Q_PROPERTY(QString chatError READ chatErrorText NOTIFY chatErrorChanged FINAL)
    Q_PROPERTY(QString chatProgress READ chatProgressText NOTIFY chatProgressChanged FINAL)
    Q_PROPERTY(int wallCount READ wallCount NOTIFY wallChanged FINAL)
    Q_PROPERTY(bool wallLoading READ isWallLoading NOTIFY wallLoadingChanged FINAL)
    Q_PROPERTY(bool wallOffline READ isWallOffline NOTIFY wallOfflineChanged FINAL)
    Q_PROPERTY(QString wallError READ wallErrorText NOTIFY wallErrorChanged FINAL)
    Q_PROPERTY(bool pinning READ isPinning NOTIFY pinningChanged FINAL)
    Q_PROPERTY(bool quotaKnown READ isQuotaKnown NOTIFY quotaChanged FINAL)
    Q_PROPERTY(Quota quota READ quotaRecord NOTIFY quotaChanged FINAL)
    Q_PROPERTY(
        bool openingMembership READ isOpeningMembership NOTIFY openingMembershipChanged FINAL)
    Q_PROPERTY(
        bool refreshingAccount READ isRefreshingAccount NOTIFY refreshingAccountChanged FINAL)
    Q_PROPERTY(bool syncing READ isSyncing NOTIFY syncingChanged FINAL)
    Q_PROPERTY(QString syncStatus READ syncStatus NOTIFY syncStatusChanged FINAL)

public:
    explicit AppStore(Platform platform, QObject *parent = nullptr);
    ~AppStore() override;

    /// The server address as the user or the settings gave it, valid or not. Key of the token, of
    /// the library file and of the profile copy.
    const QString &baseString() const { return m_baseString; }

    /// In the service's order.
    const QList<Archive> &archives() const { return m_archives.items(); }
    QAbstractListModel *archiveModel() { return &m_archives; }
    /// Sum of the archives' counts.
    double archiveTotal() const;
    /// The flagship archive, else the first; an empty record without archives.
    Archive lead() const;

    /// Present once the service has answered.
    const std::optional<Health> &health() const { return m_health; }
    bool isConnected() const { return m_health.has_value(); }
    Health healthRecord() const { return m_health.value_or(Health()); }

    /// Absent for a guest.
    const std::optional<Account> &account() const { return m_account; }
    bool isSignedIn() const { return m_account.has_value(); }
    Account accountRecord() const { return m_account.value_or(Account()); }
    /// A password or Google login is under way; no other one begins meanwhile.
    bool isAuthenticating() const { return m_authenticating; }
    /// The login under way is the Google one.
    bool isGoogleAuthenticating() const { return m_googleAuthenticating; }
    /// Only the public service knows the accounts that Google signs in.
    bool isGoogleAvailable() const;
    const LocalLibrary &library() const { return m_library; }

    /// The screen on display: "home", "chat", "wall", "history", "account", "all", "saved" or the
    /// id of an archive.
    const QString &destination() const { return m_destination; }
    void setDestination(const QString &destination);

    AppLanguage language() const { return m_language; }
    /// Stores the choice in the preferences.
    void setLanguage(AppLanguage language);
    QString languageValue() const { return AppLanguages::rawValue(m_language); }
    void setLanguageValue(const QString &rawValue);
    /// The language itself, or what the system prefers. Its raw value is the `locale` of requests.
    AppLanguage effectiveLanguage() const;
    QString locale() const { return AppLanguages::rawValue(effectiveLanguage()); }
    Words words() const { return Words(effectiveLanguage()); }
    QString text(const QString &key) const { return words().text(key); }

    /// Archive ids that the next question is limited to, sorted; empty means all. A filter of the
    /// chat alone.
    QStringList selectedArchives() const;
    void setSelectedArchives(const QStringList &archives);
    Q_INVOKABLE void selectOnlyArchive(const QString &archive) { setSelectedArchives({archive}); }

    /// Text size in points of every reader, from 15 to 26. Stored in the preferences.
    double readingSize() const { return m_readingSize; }
    /// A size beyond the limits becomes the nearest one.
    void setReadingSize(double size);

    /// The one application-wide message, shown as an alert while present.
    const std::optional<QString> &notice() const { return m_notice; }
    QString noticeText() const { return m_notice.value_or(QString()); }
    void setNotice(const std::optional<QString> &notice);
    Q_INVOKABLE void dismissNotice() { setNotice(std::nullopt); }

    bool isConnecting() const { return m_connecting; }

    /// The open conversation, always exact. In memory only until its first save.
    const Conversation &chat() const { return m_chat; }
    QString chatTitle() const { return m_chat.title; }
    bool isChatPinned() const { return m_chat.wallID.has_value(); }
    /// The messages of the open conversation, for the screen. A growing answer is told of once in a
    /// frame, everything else at once.
    QAbstractListModel *messageModel() { return &m_messages; }
    int messageCount() const { return static_cast<int>(m_chat.messages.size()); }
    /// An answer is being received. While it is, nothing but its run changes the conversation.
    bool isChatting() const { return m_chatting; }
    /// Failure of the last question.
    const std::optional<QString> &chatError() const { return m_chatError; }
    QString chatErrorText() const { return m_chatError.value_or(QString()); }
    /// What the service said last of its work on the answer.
    const std::optional<QString> &chatProgress() const { return m_chatProgress; }
    QString chatProgressText() const { return m_chatProgress.value_or(QString()); }

    const QList<WallItem> &wall() const { return m_wall; }
    int wallCount() const { return static_cast<int>(m_wall.size()); }
    /// The wall is being fetched.
    bool isWallLoading() const { return m_wallLoading; }
    /// The wall on display is the copy of this machine.
    bool isWallOffline() const { return m_wallOffline; }
    /// Failure of the last fetch of the wall.
    const std::optional<QString> &wallError() const { return m_wallError; }
    QString wallErrorText() const { return m_wallError.value_or(QString()); }
    /// What is being pinned or unpinned.
    const QSet<QString> &wallMutations() const { return m_wallMutations; }
    bool isPinning() const { return m_pinning; }

    /// The service's last word on the questions of the account.
    const std::optional<Quota> &quota() const { return m_quota; }
    bool isQuotaKnown() const { return m_quota.has_value(); }
    Quota quotaRecord() const { return m_quota.value_or(Quota()); }
    bool isOpeningMembership() const { return m_openingMembership; }
    bool isRefreshingAccount() const { return m_refreshingAccount; }
    const QSet<QString> &requestedCases() const { return m_requestedCases; }
    /// Requests for cases that are under way.
    const QSet<QString> &requestingCases() const { return m_requestingCases; }

    bool isSyncing() const { return m_syncing; }
    const QString &syncStatus() const { return m_syncStatus; }

    /// Names the library file of this server and user.
    QString libraryKey() const;

    /// Brings in the library of this server and user, to be called when that may have changed, and
    /// clears what belonged to the one before. A file that cannot be read stays as it is: the
    /// library is then empty, and nothing is saved before another load succeeds. Nor is anything
    /// saved while another process has the libraries. With an account, the wall and the quota are
    /// fetched afterwards. Never throws.
    void loadLibrary();

    /// Writes the library, to be called after each change of it. A failure ends in `notice`, and
    /// the next call tries again with the whole library. Never throws.
    void persist();

    /// Made afresh for each piece of work. Carries the token only while there is an account.
    API api() const;

    /// Goes on after the time, for a screen that waits for its user to pause. Throws
    /// CancellationError once `stop` was requested.
    [[nodiscard]] Task<void> sleep(std::chrono::milliseconds duration, std::stop_token stop) const;

    bool areCredentialsInFile() const;

    /// The program's public site, whatever server is set. Carries no token.
    API publicSite() const;

    /// The words of an error, for a screen's own line.
    QString describe(std::exception_ptr error) const;

    /// Takes up the saved login, fetches the service's health and the catalogue side by side,
    /// publishing both or neither, and has the login checked. Only a login that the service refuses
    /// is given up. Never throws: a failure ends in `notice`.
    [[nodiscard]] Task<void> connect();
    Q_INVOKABLE void beginConnect();

    /// Signs in. Does nothing while another login is under way. Throws ServiceError, URLError and
    /// DecodingError; CancellationError when server or identity changed meanwhile, and then nothing
    /// of the login is kept.
    [[nodiscard]] Task<void> login(QString handle, QString password);

    /// Starts a login through the browser, and returns. Does nothing while another login is under
    /// way, or where Google is not available. A failure ends in `notice`.
    Q_INVOKABLE void loginWithGoogle();

    /// Gives up a Google login. A password login goes on, out of sight, and still counts.
    Q_INVOKABLE void cancelAuthentication();

    /// Signs out on this machine, and then at the service. Never throws: a failure ends in
    /// `notice`.
    [[nodiscard]] Task<void> logout();
    Q_INVOKABLE void beginLogout();

    /// Goes over to another server, or connects anew to the same one, and waits for the connection.
    /// Every server keeps its own login. An unusable address changes nothing. Never throws: a
    /// failure ends in `notice`.
    [[nodiscard]] Task<void> changeServer(QString value);
    Q_INVOKABLE void beginChangeServer(const QString &value);

    /// Fetches the account, and the quota after it. A failure never signs anybody out. Never
    /// throws: a failure ends in `notice`, if it is to be shown.
    [[nodiscard]] Task<void> refreshAccount(bool showError = false);
    Q_INVOKABLE void beginRefreshAccount(bool showError = false);

    /// A failure leaves the quota as it was. Never throws.
    [[nodiscard]] Task<void> refreshQuota();
    Q_INVOKABLE void beginRefreshQuota();

    /// Sends a change of the profile, told by the member "action", and fetches the account. The
    /// action "delete" ends the account, and the login with it. Throws what the request throws;
    /// CancellationError when server or identity changed meanwhile.
    [[nodiscard]] Task<void> updateProfile(QJsonObject body);

    /// Asks for another mail that confirms the account's address; whether one was sent. Throws what
    /// the request throws.
    [[nodiscard]] Task<bool> resendVerification();

    /// Opens the page where the membership is bought or managed, in the browser; `plan` is
    /// "monthly" or "yearly". Does nothing for a guest, nor while a page is being opened. Never
    /// throws: a failure ends in `notice`.
    [[nodiscard]] Task<void> openMembership(QString plan);
    Q_INVOKABLE void beginOpenMembership(const QString &plan);

    /// Sends the first of the queued changes and lays the account's library of the reply into this
    /// one. Does nothing for a guest, while saving is paused, and while a run is under way. Never
    /// throws: `syncStatus` tells how it went.
    [[nodiscard]] Task<void> syncLibrary();
    Q_INVOKABLE void beginSync();

    /// Fetches the wall; out of reach of the service it is the copy of this machine. Never throws.
    [[nodiscard]] Task<void> refreshWall();
    Q_INVOKABLE void beginRefreshWall();
    /// Whether the wall on display holds the case.
    Q_INVOKABLE bool isOnWall(const CaseCard &card) const;
    /// Puts the case on the wall or takes it off. Never throws: a failure ends in `notice`.
    [[nodiscard]] Task<void> toggleWallCase(CaseCard card);
    Q_INVOKABLE void beginToggleWallCase(const CaseCard &card);
    /// Takes an item off the wall. Never throws: a failure ends in `notice`.
    [[nodiscard]] Task<void> removeWallItem(WallItem item);
    /// Puts the open conversation on the wall, or brings its item there up to date. Never throws: a
    /// failure ends in `notice`.
    [[nodiscard]] Task<void> pinChat();
    Q_INVOKABLE void beginPinChat();
    /// Opens a pinned chat as a new conversation, which is stored once it is saved.
    void resumeWallChat(const SavedChat &saved);

    /// Asks within the open conversation; the answer comes into its last message. The cards of
    /// `evidence` go along as the cases that the question is about. Does nothing for an empty
    /// question or during an answer; a guest is told to sign in, by `chatError`.
    void startChat(const QString &question, const QList<CaseCard> &evidence);
    Q_INVOKABLE void startChat(const QString &question) { startChat(question, {}); }

    /// Ends the answer as it stands and keeps it. From here on the run touches nothing.
    Q_INVOKABLE void stopChat();

    /// Leaves the open conversation and opens the chat screen with a new one.
    Q_INVOKABLE void newChat();

    /// Leaves the open conversation and opens the chat screen with this one.
    void openChat(Conversation conversation);

    /// Puts the open conversation at the front of the library and writes it, unless it is empty.
    void saveChat();

    /// Does nothing for an empty title or an unknown conversation.
    void renameConversation(Identifier id, const QString &title);

    /// If it is the open one, a new one takes its place.
    void deleteConversation(Conversation conversation);

    /// Whether the library holds a card with the same key.
    bool saved(const CaseCard &card) const;

    /// Puts a card into the library, or takes it out.
    void toggle(CaseCard card);

    /// Asks the editors of an archive for more cases on the conversation's first question, once for
    /// each conversation and archive. Never throws: the outcome is told by `notice`.
    [[nodiscard]] Task<void> requestMoreCases(QString archive);
    Q_INVOKABLE void beginRequestMoreCases(const QString &archive);

    /// The copy of a case from its last reading by this user, in the language of the locale.
    std::optional<CaseEntry> keptCase(const QString &key, const QString &locale) const;
    /// Keeps a case as that copy. A failure has no effect.
    void keepCase(const CaseEntry &entry, const QString &key, const QString &locale);

    /// Hands an address that was checked to the system's browser or mail program. A failure ends in
    /// `notice`.
    Q_INVOKABLE void openAddress(const QUrl &address);

    /// Replaces the identity of the account and server context, which voids all work in flight.
    void replaceGeneration();

Q_SIGNALS:
    void baseStringChanged();
    void archivesChanged();
    void healthChanged();
    void accountChanged();
    void authenticatingChanged();
    void googleAuthenticatingChanged();
    void libraryChanged();
    void destinationChanged();
    void languageChanged();
    void wordsChanged();
    void selectedArchivesChanged();
    void readingSizeChanged();
    void noticeChanged();
    void connectingChanged();
    /// Another conversation is open, or this one has another heading or more messages.
    void chatChanged();
    void chattingChanged();
    void chatErrorChanged();
    void chatProgressChanged();
    void wallChanged();
    void wallLoadingChanged();
    void wallOfflineChanged();
    void wallErrorChanged();
    void wallMutationsChanged();
    void pinningChanged();
    void quotaChanged();
    void openingMembershipChanged();
    void refreshingAccountChanged();
    void requestedCasesChanged();
    void requestingCasesChanged();
    void syncingChanged();
    void syncStatusChanged();
    void libraryKeyChanged();

private:
    /// Tests put an account or a library in place that no operation of theirs is about.
    friend class StoreAccess;

    struct Catalogue {
        Health health;
        QList<Archive> archives;
    };

    /// What a run of the chat holds by value, whatever happens around it.
    struct ChatRun;

    struct KeptKey {
        QString server;
        std::optional<QString> user;
        QString key;
    };

    static Task<Catalogue> fetchCatalogue(API api, QString locale);

    /// The address that requests go to: a base that is not valid falls to the built-in one.
    QString requestBase() const;
    void setConnecting(bool connecting);
    void setArchives(const QList<Archive> &archives);

    /// Starts a synchronisation once no edit has come for a moment.
    void scheduleSync();
    /// Ends a waiting or running synchronisation; to be called before the account or server
    /// changes.
    void cancelSync();
    Task<void> syncAfterPause(std::stop_token stop);
    Task<void> syncOnce(std::stop_token stop);
    /// Brings the open conversation to where the reply has put it.
    void followReply(const LibraryReply &reply);
    void setSyncing(bool syncing, const QString &status);

    /// Marks a case or an item of the wall as being changed, or no longer.
    void markWallMutation(const QString &key, bool changing);
    void showToggled(const CaseCard &card, bool on);
    void showWallCopy();
    Task<void> pinChat(API service, QString key, Identifier conversation);

    void setAccount(const std::optional<Account> &account);
    void setLibrary(const LocalLibrary &library);
    /// Throws FileError.
    void writeLibrary(const QString &key);

    /// Shows the account of the saved login as it was last seen, with its library; false when there
    /// is none, or somebody is signed in.
    bool restoreAccount();
    /// Asks the service whether the token of `service` still counts. Throws only when a void login
    /// cannot be removed.
    [[nodiscard]] Task<void> checkAccount(API service);
    void endVoidLogin();

    void beginAuthentication();
    void endAuthentication();
    [[nodiscard]] Task<void> runGoogleLogin(Marker<> marker, Marker<> run, QString server,
                                            QString language, std::stop_token stop);
    /// From the browser to a login. Throws what goes wrong, CancellationError when the login is no
    /// longer wanted.
    [[nodiscard]] Task<Login> googleLogin(Marker<> marker, QString server, QString language,
                                          std::stop_token stop);
    /// Keeps the token and signs in, if generation and server are still those that the login began
    /// with. Throws CancellationError if not, URLError for a login that is none, ServiceError when
    /// the token cannot be stored; then nothing has changed.
    void acceptLogin(const Login &login, const Marker<> &marker, const QString &server);
    /// What every change of the signed-in identity does, once the token is stored or removed.
    void changeIdentity(const std::optional<Login> &login);

    /// Shows what the service says of the signed-in account, and keeps a copy for the next start.
    void keepAccount(const Account &account);
    [[nodiscard]] Task<void> fetchAccount(bool showError);
    [[nodiscard]] Task<void> refreshWallAndQuota();

    /// What stood open stays as it was last saved.
    void openEmptyChat();
    void setChat(const Conversation &chat);
    /// A run that is not current touches nothing.
    bool isCurrent(const ChatRun &run) const;
    Task<void> runChat(ChatRun run);
    Task<void> receiveAnswer(ChatRun run);
    void takeEvent(const ChatEvent &event, qsizetype index);

    void retell(AppLanguage before);

    /// Tells the screens only of what really is another value.
    template <class Value>
    void publish(Value &field, const std::type_identity_t<Value> &value,
                 void (AppStore::*changed)()) {
        if (field == value)
            return;
        field = value;
        Q_EMIT(this->*changed)();
    }

    Platform m_platform;
    GoogleSignIn m_googleSignIn{m_platform.browserSession, m_platform.clock};
    /// The last Google login.
    std::stop_source m_authTask{std::nostopstate};

    QString m_baseString;
    ArchiveModel m_archives;
    std::optional<Health> m_health;
    std::optional<Account> m_account;
    bool m_authenticating = false;
    bool m_googleAuthenticating = false;
    LocalLibrary m_library;
    QString m_destination = QStringLiteral("home");
    AppLanguage m_language;
    QSet<QString> m_selectedArchives;
    double m_readingSize;
    std::optional<QString> m_notice;
    bool m_connecting = false;
    Conversation m_chat;
    MessageModel m_messages;
    FramePace m_growth;
    bool m_chatting = false;
    std::optional<QString> m_chatError;
    std::optional<QString> m_chatProgress;
    QList<WallItem> m_wall;
    bool m_wallLoading = false;
    bool m_wallOffline = false;
    std::optional<QString> m_wallError;
    QSet<QString> m_wallMutations;
    bool m_pinning = false;
    std::optional<Quota> m_quota;
    bool m_openingMembership = false;
    bool m_refreshingAccount = false;
    QSet<QString> m_requestedCases;
    QSet<QString> m_requestingCases;
    bool m_syncing = false;
    /// The pause after the last edit, and the run that it leads to.
    std::stop_source m_syncTask;
    /// Identity of the current run, replaced by each run and by cancelSync.
    Identifier m_syncRun = Identifier::make();
    QString m_syncStatus = QStringLiteral("Sign in to sync across devices.");
    /// Ends the current run.
    std::stop_source m_chatStop;
    /// The library's version that the open conversation is being edited against.
    std::optional<qint64> m_chatBaseVersion;
    /// False while saving is paused, to protect a file that could not be read or that another
    /// process writes.
    bool m_libraryWritable = true;
    /// Whether the file of an account's library says what `m_library` does.
    bool m_libraryOnDisk = false;
    /// Whether any library has been loaded since the start.
    bool m_libraryLoaded = false;
    LibraryEncoder m_libraryEncoder;
    mutable KeptKey m_keptKey;

    /// Identity of the current account and server context.
    Identifier m_generation = Identifier::make();
    /// Identity of the login under way, or of the last one.
    Identifier m_authenticationRun = Identifier::make();
    /// Identity of the current run of the chat.
    Identifier m_chatRun = Identifier::make();
};
