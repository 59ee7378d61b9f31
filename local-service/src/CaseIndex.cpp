#include "CaseIndex.h"

#include "QuestionWords.h"
#include "SearchText.h"
#include "Sentences.h"
#include "WordRoot.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

constexpr double titleWeight = 2.5;
constexpr double namesWeight = 2.0;
constexpr double summaryWeight = 1.5;
constexpr double subjectWeight = 3.0;
constexpr double lessonWeight = 1.3;
constexpr double textWeight = 1.0;

/// The surnames of all whom the text introduces by more than one name.
QSet<QString> introducedSurnames(const QString &text) {
    static const QRegularExpression fullName(
        QStringLiteral("\\p{Lu}[\\p{L}’-]*\\.?(?: (?:\\p{Lu}\\.|van|von|der|de|da|Sir))* "
                       "(\\p{Lu}\\p{Ll}[\\p{L}’-]+)"));
    QSet<QString> surnames;
    auto names = fullName.globalMatch(text);
    while (names.hasNext())
        surnames.insert(names.next().captured(1));
    return surnames;
}

/// Whether the sentence has one of the surnames without a name before it.
bool namesOneOf(const QString &sentence, const QSet<QString> &surnames) {
    static const QRegularExpression name(QStringLiteral("\\p{Lu}[\\p{L}-]+"));
    bool afterName = false;
    const auto words = sentence.split(QLatin1Char(' '));
    for (const QString &word : words) {
        const auto match = name.match(word);
        if (match.hasMatch() && !afterName && surnames.contains(match.captured()))
            return true;
        afterName = match.hasMatch() && match.capturedEnd() == word.size();
    }
    return false;
}

} // namespace

CaseCard IndexedCase::card() const {
    CaseCard card;
    card.id = written.id;
    card.key = archive + QLatin1Char(':') + written.id;
    card.archive = archive;
    card.title = written.title;
    card.summary = written.summary;
    card.category = written.category;
    card.era = written.era;
    card.locale = QStringLiteral("en");
    if (!written.org.isEmpty())
        card.org = written.org;
    return card;
}

CaseIndex::CaseIndex(const QList<CaseData::File> &files) {
    for (const auto &[archive, cases] : files) {
        for (const auto &written : cases)
            m_cases.push_back(index(archive.id, written));
    }
    m_occurrences.resize(static_cast<std::size_t>(m_numbers.size()));
    for (const auto &item : m_cases) {
        for (auto weight = item.weights.begin(); weight != item.weights.end(); ++weight)
            ++m_occurrences[weight.key()];
    }
}

const IndexedCase *CaseIndex::find(const QString &archive, const QString &id) const {
    const auto found =
        std::find_if(m_cases.begin(), m_cases.end(), [&](const IndexedCase &candidate) {
            return candidate.archive == archive && candidate.written.id == id;
        });
    return found == m_cases.end() ? nullptr : &*found;
}

std::optional<RootNumber> CaseIndex::number(const QString &root) const {
    const auto found = m_numbers.find(root);
    return found == m_numbers.end() ? std::nullopt : std::optional(*found);
}

double CaseIndex::rarity(std::optional<RootNumber> root) const {
    const double all = static_cast<double>(m_cases.size());
    const double having = root ? m_occurrences[*root] : 0;
    return std::min(greatestRarity, std::log(1 + (all - having + 0.5) / (having + 0.5)));
}

RootNumber CaseIndex::add(const QString &root) {
    const auto known = m_numbers.find(root);
    if (known != m_numbers.end())
        return *known;
    const auto number = static_cast<RootNumber>(m_numbers.size());
    m_numbers.insert(root, number);
    m_names.push_back(true);
    return number;
}

QList<RootNumber> CaseIndex::addAll(const QString &text) {
    QList<RootNumber> numbers;
    const auto roots = QuestionWords::roots(text);
    for (const QString &root : roots)
        numbers.append(add(root));
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

void CaseIndex::noteNames(const QString &text) {
    static const QRegularExpression lowerCaseWord(
        QStringLiteral("(?<![\\p{L}\\p{N}])\\p{Ll}\\p{L}*"));
    auto found = lowerCaseWord.globalMatch(text);
    while (found.hasNext()) {
        const auto words = SearchText::words(found.next().captured());
        for (const QString &word : words) {
            if (const auto root = number(WordRoot::of(word)))
                m_names[*root] = false;
        }
    }
}

void CaseIndex::weigh(IndexedCase &item, const QString &text, double weight) {
    const auto roots = QuestionWords::roots(text);
    for (const QString &root : roots)
        item.weights[add(root)] += weight;
    noteNames(text);
}

void CaseIndex::addSentences(IndexedCase &item, const QString &text, qsizetype section) {
    const auto sentences = Sentences::of(text);
    for (const QString &sentence : sentences) {
        const auto words = static_cast<int>(sentence.split(QLatin1Char(' ')).size());
        item.sentences.append(
            {sentence, section, addAll(sentence), words, Sentences::standsAlone(sentence), false});
    }
}

IndexedCase CaseIndex::index(const QString &archive, const CaseData::WrittenCase &written) {
    IndexedCase item;
    item.archive = archive;
    item.written = written;

    const QString names = written.org + QLatin1Char(' ') + written.companies.join(QLatin1Char(' '));
    const QString inView =
        written.title + QLatin1Char(' ') + written.summary + QLatin1Char(' ') + written.org;
    QString all = inView;
    weigh(item, written.title, titleWeight);
    weigh(item, names, namesWeight);
    weigh(item, written.category, textWeight);
    weigh(item, written.summary, summaryWeight);
    weigh(item, written.tradeOut.value_or(QString()), summaryWeight);
    item.titleRoots = addAll(written.title);
    addSentences(item, written.summary, IndexedCase::summary);
    for (qsizetype position = 0; position < written.sections.size(); ++position) {
        const auto &section = written.sections[position];
        weigh(item, section.body, position == item.lessonSection() ? lessonWeight : textWeight);
        addSentences(item, section.body, position);
        const auto subjects = section.subjects.value_or(QList<QString>());
        for (const QString &subject : subjects) {
            weigh(item, subject, subjectWeight);
            item.subjects.append({subject, position, addAll(subject)});
        }
        all += QLatin1Char(' ') + section.body;
    }

    auto strangers = introducedSurnames(all);
    const auto known = inView.split(QRegularExpression(QStringLiteral("[^\\p{L}’-]+")));
    for (const QString &word : known)
        strangers.remove(word);
    for (auto &sentence : item.sentences)
        sentence.namesStranger = namesOneOf(sentence.text, strangers);
    return item;
}
