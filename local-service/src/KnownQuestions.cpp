#include "KnownQuestions.h"

#include "TextTables.h"

namespace {

std::optional<Inquiry::Kind> kindOf(const QString &key) {
    if (key == QLatin1String("askSuggestWhy"))
        return Inquiry::Kind::Reasons;
    if (key == QLatin1String("askSuggestDo"))
        return Inquiry::Kind::Lessons;
    if (key == QLatin1String("askSuggestSummarise"))
        return Inquiry::Kind::Summary;
    if (key.startsWith(QLatin1String("askExamples.")))
        return Inquiry::Kind::Question;
    return std::nullopt;
}

} // namespace

KnownQuestions::KnownQuestions(const TextTables &interface) {
    for (const auto language : AppLanguages::allCases) {
        const auto table = interface.table(language);
        for (auto entry = table.begin(); entry != table.end(); ++entry) {
            // Typed or copied, the kind of a blank does not matter.
            const auto text = entry.value().simplified();
            if (const auto kind = kindOf(entry.key()))
                m_questions.insert(text, {*kind, interface.text(entry.key(), AppLanguage::en)});
            else if (entry.key() == QLatin1String("askSuggestOne"))
                m_explainPrefixes.append(text);
        }
    }
}

KnownQuestions::Recognized KnownQuestions::recognize(const QString &question) const {
    const auto text = question.simplified();
    const auto known = m_questions.find(text);
    if (known != m_questions.end())
        return *known;
    for (const QString &prefix : m_explainPrefixes) {
        if (text.startsWith(prefix))
            return {Inquiry::Kind::Explain, text.mid(prefix.size()).trimmed()};
    }
    return {Inquiry::Kind::Question, question};
}
