#include "PreviewWriter.h"

#include "AnswerStream.h"

namespace {

class Preview final : public AnswerInProgress {
public:
    Preview(QList<AnswerStream::Step> steps, Pause pause)
        : m_steps(std::move(steps)), m_pause(std::move(pause)) {}

    std::optional<ChatEvent> next() override {
        const auto &step = m_steps[m_position++];
        if (step.pause.count() > 0)
            m_pause(step.pause);
        return step.event;
    }

private:
    QList<AnswerStream::Step> m_steps;
    Pause m_pause;
    qsizetype m_position = 0;
};

} // namespace

PreviewWriter::PreviewWriter(const TextTables &words, Pause pause)
    : m_words(words), m_pause(std::move(pause)) {}

std::unique_ptr<AnswerInProgress> PreviewWriter::write(const ChatRequest & /*request*/,
                                                       const Inquiry &inquiry,
                                                       const Answer &found) const {
    return std::make_unique<Preview>(AnswerStream::steps(m_words, inquiry, found), m_pause);
}
