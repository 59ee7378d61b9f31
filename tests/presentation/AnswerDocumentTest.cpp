#include "presentation/AnswerDocument.h"
#include "presentation/Fonts.h"
#include "presentation/Ink.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTextBlock>
#include <QTextDocument>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A text of a screen, and what an AnswerDocument makes of it.
class Page final {
public:
    explicit Page(QQmlEngine &engine) {
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nTextEdit { readOnly: true; width: 300 }", QUrl());
        m_edit.reset(component.create());
        EXPECT_TRUE(m_edit) << qPrintable(component.errorString());
        auto *document = m_edit->property("textDocument").value<QQuickTextDocument *>();
        m_document = document->textDocument();
        answer.setDocument(document);
    }

    QTextDocument &document() { return *m_document; }
    QObject &edit() { return *m_edit; }

    /// Every stretch of one format: its text, its style, its address.
    QString content() const {
        QString result;
        for (auto block = m_document->begin(); block.isValid(); block = block.next()) {
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const auto format = it.fragment().charFormat();
                result += u"[%1|%2|%3|%4]"_s.arg(
                    it.fragment().text(), format.font().families().value(0),
                    format.font().bold() ? u"bold"_s : QString(), format.anchorHref());
            }
            result += u'\n';
        }
        return result;
    }

    AnswerDocument answer;

private:
    std::unique_ptr<QObject> m_edit;
    QTextDocument *m_document = nullptr;
};

class AnswerDocumentTest : public testing::Test {
protected:
    ~AnswerDocumentTest() override {
        Fonts::shared().setLanguage(AppLanguage::en);
        Ink::shared().setDark(false);
    }

    QQmlEngine engine;
};

const auto whole =
    u"# A *case*\n\nIt was **old**, [told](https://example.org/a) and\n_told_ again.\n"
    "- one `x`\n- two\n \n```py\n__init__\n\n*x*\n```\nEnd\r\n**\U0001F600** \n"_s;

} // namespace

TEST_F(AnswerDocumentTest, showsTheSameHoweverTheTextGrew) {
    for (const qsizetype step : {1, 3, 17}) {
        Page grown(engine);
        for (qsizetype size = 0; size <= whole.size(); size += step) {
            Page fresh(engine);
            fresh.answer.setText(whole.first(size));
            grown.answer.setText(whole.first(size));
            ASSERT_EQ(grown.content(), fresh.content()) << size;
        }
    }
    Page page(engine);
    page.answer.setText(whole);
    EXPECT_EQ(
        page.document().toPlainText().toStdString(),
        "# A case\n\nIt was old, told and\ntold again.\n- one x\n- two\n \npy\n__init__\n\n*x*\n\n"
        "End\n\xF0\x9F\x98\x80 \n");
    page.answer.setText(u"Another *one*"_s);
    EXPECT_EQ(page.document().toPlainText(), u"Another one"_s);
    page.answer.setText(QString());
    EXPECT_EQ(page.document().toPlainText(), QString());
}

TEST_F(AnswerDocumentTest, touchesOnlyWhatDiffers) {
    Page page(engine);
    page.answer.setText(whole + u"and *so"_s);
    QList<QPair<int, int>> changes;
    QObject::connect(&page.document(), &QTextDocument::contentsChange,
                     [&](int from, int removed, int added) {
                         changes.append({from, removed + added});
                     });
    const int length = page.document().characterCount();
    page.answer.setText(page.answer.text() + u" it"_s);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_GE(changes[0].first, length - 2);
    EXPECT_LE(changes[0].second, 5);
    // The closing mark changes the words behind the opening one.
    page.answer.setText(page.answer.text() + u"*"_s);
    EXPECT_EQ(changes.size(), 2);
    EXPECT_GE(changes[1].first, length - 5);
}

TEST_F(AnswerDocumentTest, linksAreThoseOfTheTextEdit) {
    Page page(engine);
    page.answer.setText(u"[told](https://example.org/a) [x](javascript:alert(1))"_s);
    auto *edit = qobject_cast<QQuickItem *>(&page.edit());
    QString link;
    QMetaObject::invokeMethod(edit, "linkAt", Q_RETURN_ARG(QString, link), Q_ARG(qreal, 5),
                              Q_ARG(qreal, 5));
    EXPECT_EQ(link, u"https://example.org/a"_s);
    EXPECT_FALSE(page.content().contains(u"javascript"_s));
    EXPECT_EQ(edit->property("text").toString(), u"told x"_s);
}

TEST_F(AnswerDocumentTest, followsSizeLanguageAndAppearance) {
    Page page(engine);
    page.answer.setSize(20);
    page.answer.setText(u"**old** `code` [told](https://example.org/a)"_s);
    const auto formatAt = [&](int position) {
        QTextCursor cursor(&page.document());
        cursor.setPosition(position);
        return cursor.charFormat();
    };
    EXPECT_EQ(formatAt(2).font(), Fonts::shared().face().reading(20, 700));
    EXPECT_EQ(formatAt(6).font().families(), Fonts::shared().face().mono(17, 400).families());
    EXPECT_EQ(formatAt(11).foreground().color(), Ink::shared().brand());
    Ink::shared().setDark(true);
    EXPECT_EQ(formatAt(11).foreground().color(), Ink::shared().brand());
    Fonts::shared().setLanguage(AppLanguage::ja);
    EXPECT_TRUE(formatAt(2).font().bold());
    page.answer.setSize(30);
    EXPECT_EQ(formatAt(2).font().pixelSize(), Fonts::shared().face().reading(30).pixelSize());
    EXPECT_EQ(page.document().toPlainText(), u"old code told"_s);
}
