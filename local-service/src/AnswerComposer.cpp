#include "AnswerComposer.h"

#include "SearchText.h"
#include "SentenceChoice.h"
#include "TextTables.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

using Kind = Inquiry::Kind;
using Retrieval::Finding;

/// What opening and passages may fill together: several cases leave room for a closing line, and
/// one case alone or a loose relation is soon read enough of.
constexpr int roomForSeveral = 250;
constexpr int roomForOne = 200;
constexpr int roomForLoose = 150;
/// The share of a question that a subject must cover to be named as the reason for citing.
constexpr double namedSubjectShare = 0.25;
constexpr qsizetype namedWords = 2;

int wordCount(const QString &text) {
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    return static_cast<int>(text.split(blanks, Qt::SkipEmptyParts).size());
}

/// The text as inline markdown shows it letter by letter.
QString literal(QString text) {
    static const QRegularExpression signs(QStringLiteral("([\\\\*_\\[\\]<>`])"));
    return text.replace(signs, QStringLiteral("\\\\1"));
}

/// What an answer says of one case.
class Passage final {
public:
    Passage(const IndexedCase &item, SentenceChoice::Wishes wishes, QString lessonLabel)
        : m_item(item), m_wishes(std::move(wishes)), m_lessonLabel(std::move(lessonLabel)) {}

    /// Takes the next sentence, if so many words leave room for it. Gives the number of words
    /// taken, 0 when there is nothing more to take.
    int takeNext(int room) {
        for (const qsizetype position : std::as_const(m_wishes.core)) {
            if (isOpen(position) && cost(position) <= room)
                return take(position);
        }
        for (const qsizetype position : std::as_const(m_wishes.more)) {
            // Nothing that happens to fit is taken in place of what should come here.
            if (isOpen(position))
                return cost(position) <= room ? take(position) : 0;
        }
        return 0;
    }

    QString heading() const {
        return QStringLiteral("**%1** (%2)").arg(literal(m_item.written.title), m_item.written.era);
    }

    QString text() const {
        // A line for the summary, for each section and for the lesson.
        QStringList lines = {heading()};
        std::optional<qsizetype> section;
        for (const qsizetype position : m_taken) {
            const auto &sentence = m_item.sentences[position];
            if (section == sentence.section)
                lines.last() += QLatin1Char(' ') + literal(sentence.text);
            else
                lines.append(literal(sentence.text));
            section = sentence.section;
        }
        if (!m_taken.isEmpty() && isSetApart(m_taken.last()))
            lines.last() = QStringLiteral("%1 *%2*").arg(m_lessonLabel, lines.last());
        return lines.join(QLatin1Char('\n'));
    }

private:
    /// Whether the sentence stands on a line of its own as the lesson.
    bool isSetApart(qsizetype position) const {
        return !m_lessonLabel.isEmpty() &&
               m_item.sentences[position].section == m_item.lessonSection();
    }
    bool opensLesson(qsizetype position) const {
        return isSetApart(position) &&
               std::none_of(m_taken.begin(), m_taken.end(),
                            [&](qsizetype taken) { return isSetApart(taken); });
    }
    int labelWords() const { return wordCount(m_lessonLabel); }
    int cost(qsizetype position) const {
        return m_item.sentences[position].wordCount + (opensLesson(position) ? labelWords() : 0);
    }
    /// Whether it could be taken. A sentence that points back needs the one before it.
    bool isOpen(qsizetype position) const {
        return !m_taken.contains(position) &&
               (m_item.sentences[position].standsAlone || m_taken.contains(position - 1));
    }
    int take(qsizetype position) {
        const int words = cost(position);
        m_taken.insert(std::upper_bound(m_taken.begin(), m_taken.end(), position), position);
        return words;
    }

    const IndexedCase &m_item;
    SentenceChoice::Wishes m_wishes;
    QString m_lessonLabel;
    QList<qsizetype> m_taken;
};

class Composition final {
public:
    Composition(const TextTables &words, const Inquiry &inquiry, const Retrieval::Result &found)
        : m_words(words), m_inquiry(inquiry), m_found(found) {}

    Answer compose() const {
        if (m_found.findings.isEmpty())
            return {nothingFound(), {}};
        QStringList paragraphs = {opening()};
        paragraphs += passages(wordCount(paragraphs.first()));
        const auto last = closing();
        if (!last.isEmpty() && wordCount(paragraphs.join(QLatin1Char(' ')) + QLatin1Char(' ') +
                                         last) <= AnswerComposer::greatestWords)
            paragraphs.append(last);
        return {paragraphs.join(QStringLiteral("\n\n")), references()};
    }

private:
    QString text(const char *key) const {
        return m_words.text(QStringLiteral("answer.") + QLatin1String(key), m_inquiry.language);
    }
    bool isLoose() const { return !m_found.findings.first().strong; }

    QString nothingFound() const {
        const bool otherLanguage = m_inquiry.language != AppLanguage::en &&
                                   !QuestionWords::looksEnglish(m_inquiry.question);
        const auto request = m_words.text(QStringLiteral("askRequestMore"), m_inquiry.language);
        return text(otherLanguage ? "nothingEnglish" : "nothing")
            .replace(QStringLiteral("{request}"), request);
    }

    QString opening() const {
        switch (m_inquiry.kind) {
        case Kind::Reasons:
            return text("open.reasons");
        case Kind::Lessons:
            return text("open.lessons");
        case Kind::Summary:
            return text("open.summary");
        case Kind::Explain:
            return text("open.evidence");
        case Kind::Question:
            break;
        }
        if (m_found.aboutEvidence) {
            const bool speaks =
                std::any_of(m_found.findings.begin(), m_found.findings.end(),
                            [](const Finding &finding) { return finding.score > 0; });
            return text(speaks ? "open.evidence" : "open.evidenceSilent");
        }
        if (isLoose())
            return text("open.loose");
        if (m_found.findings.size() == 1)
            return text("open.one");
        return text(openingByForm()).replace(QStringLiteral("{range}"), range());
    }

    const char *openingByForm() const {
        const auto first = SearchText::words(m_inquiry.question).value(0);
        if (first == QLatin1String("why"))
            return "open.why";
        return first == QLatin1String("how") ? "open.how" : "open.question";
    }

    /// From the earliest to the latest of the cases.
    QString range() const {
        const auto [earliest, latest] =
            std::minmax_element(m_found.findings.begin(), m_found.findings.end(),
                                [](const Finding &a, const Finding &b) {
                                    return a.item->written.year < b.item->written.year;
                                });
        const auto from = earliest->item->written.year;
        const auto to = latest->item->written.year;
        if (from == to)
            return {};
        return text("range")
            .replace(QStringLiteral("{from}"), QString::number(from))
            .replace(QStringLiteral("{to}"), QString::number(to));
    }

    int roomForAll() const {
        if (isLoose())
            return roomForLoose;
        return m_found.findings.size() == 1 ? roomForOne : roomForSeveral;
    }

    QStringList passages(int openingWords) const {
        const auto label = m_inquiry.kind == Kind::Lessons ? QString() : text("lesson");
        std::vector<Passage> passages;
        int room = roomForAll() - openingWords;
        for (const Finding &finding : m_found.findings) {
            const auto &item = *finding.item;
            passages.emplace_back(item, SentenceChoice::wishes(item, m_inquiry, m_found.match),
                                  label);
            room -= wordCount(passages.back().heading());
        }
        bool taken = true;
        while (taken) {
            taken = false;
            for (Passage &passage : passages) {
                const int words = passage.takeNext(room);
                room -= words;
                taken = taken || words > 0;
            }
        }
        QStringList texts;
        for (const Passage &passage : passages)
            texts.append(passage.text());
        return texts;
    }

    /// What the cases have in common, as far as the archive itself says so.
    QString closing() const {
        const auto &findings = m_found.findings;
        if (isLoose() || m_inquiry.kind == Kind::Lessons || m_inquiry.kind == Kind::Reasons)
            return {};
        QStringList trades;
        for (const Finding &finding : findings) {
            if (const auto &trade = finding.item->written.tradeOut)
                trades.append(QStringLiteral("*%1*").arg(literal(*trade)));
        }
        if (trades.size() == findings.size())
            return text("trades") + QLatin1Char(' ') + trades.join(QLatin1Char(' '));
        if (findings.size() < 2)
            return {};
        if (areRelated())
            return text("related");
        const auto &category = findings.first().item->written.category;
        const bool same =
            std::all_of(findings.begin(), findings.end(), [&](const Finding &finding) {
                return finding.item->written.category == category;
            });
        return same ? text("sameCategory").replace(QStringLiteral("{category}"), category)
                    : QString();
    }

    bool areRelated() const {
        const auto &findings = m_found.findings;
        return std::all_of(findings.begin(), findings.end(), [&](const Finding &finding) {
            const auto related = finding.item->written.related.value_or(QList<QString>());
            return std::any_of(findings.begin(), findings.end(), [&](const Finding &other) {
                return related.contains(other.item->archive + QLatin1Char('/') +
                                        other.item->written.id);
            });
        });
    }

    QList<CaseCard> references() const {
        QList<CaseCard> cards;
        for (const Finding &finding : m_found.findings) {
            auto card = finding.item->card();
            card.strong = finding.strong;
            const auto why = note(finding);
            if (!why.isEmpty())
                card.note = why;
            cards.append(card);
        }
        return cards;
    }

    QString note(const Finding &finding) const {
        if (m_inquiry.aboutEvidence)
            return text("note.asked");
        if (m_found.aboutEvidence)
            return text("note.thread");
        const auto *subject = m_found.match.bestSubject(*finding.item);
        if (subject && m_found.match.share(subject->roots) >= namedSubjectShare)
            return text("note.subject").replace(QStringLiteral("{subject}"), subject->text);
        const auto found = m_found.match.wordsFoundIn(*finding.item);
        QStringList quoted;
        for (const QString &word : found.first(std::min(found.size(), namedWords)))
            quoted.append(text("quoted").replace(QStringLiteral("{word}"), word));
        if (quoted.isEmpty())
            return {};
        return text(finding.strong ? "note.words" : "note.loose")
            .replace(QStringLiteral("{words}"), quoted.join(text("comma")));
    }

    const TextTables &m_words;
    const Inquiry &m_inquiry;
    const Retrieval::Result &m_found;
};

} // namespace

Answer AnswerComposer::compose(const TextTables &words, const Inquiry &inquiry,
                               const Retrieval::Result &found) {
    return Composition(words, inquiry, found).compose();
}
