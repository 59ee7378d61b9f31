#include "screens/ExampleQuestions.h"

namespace {

constexpr int shown = 3;
constexpr int perArchive = 9;

} // namespace

QString ExampleQuestions::archiveOf(const AppStore &store) {
    const auto selected = store.selectedArchives();
    return selected.size() == 1 ? selected.first() : QStringLiteral("foible");
}

void ExampleQuestions::setStore(AppStore *store) {
    m_store = store;
    connect(store, &AppStore::selectedArchivesChanged, this, &ExampleQuestions::questionsChanged);
    connect(store, &AppStore::wordsChanged, this, &ExampleQuestions::questionsChanged);
    Q_EMIT questionsChanged();
}

QStringList ExampleQuestions::questions() const {
    if (!m_store)
        return {};
    const QString family = QLatin1String("askExamples.") + archiveOf(*m_store) + QLatin1Char('.');
    QStringList result;
    for (int i = 0; i < shown; ++i)
        result += m_store->text(family + QString::number((m_batch * shown + i) % perArchive));
    return result;
}

void ExampleQuestions::shuffle() {
    ++m_batch;
    Q_EMIT questionsChanged();
}
