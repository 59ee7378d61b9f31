#include "tests/records/RecordTexts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include <array>
#include <functional>

namespace {

QByteArray bytes(const QJsonValue &value) {
    return QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact);
}

QJsonValue parsed(const QByteArray &text) {
    return QJsonDocument::fromJson(text).object();
}

bool isOptionalKey(const QString &key) {
    return key.endsWith(QLatin1Char('?'));
}
bool isMapKey(const QString &key) {
    return key.endsWith(QLatin1Char('*'));
}

/// The value without the marks on its keys.
QJsonValue plain(const QJsonValue &annotated) {
    if (annotated.isArray()) {
        QJsonArray result;
        for (const auto &element : annotated.toArray())
            result.append(plain(element));
        return result;
    }
    if (annotated.isObject()) {
        QJsonObject result;
        const auto object = annotated.toObject();
        for (auto entry = object.begin(); entry != object.end(); ++entry) {
            const auto key = entry.key();
            const bool marked = isOptionalKey(key) || isMapKey(key);
            result.insert(marked ? key.chopped(1) : key, plain(entry.value()));
        }
        return result;
    }
    return annotated;
}

/// Values of every type, to be put where a value of one type is expected.
const QJsonArray &oneOfEachType() {
    static const QJsonArray values = {QJsonValue::Null, QStringLiteral("24"), 24, 24.5, true, false,
                                      QJsonArray(),     QJsonObject()};
    return values;
}

/// Gives the whole text with another value in the place of the visited one.
using Rebuild = std::function<QJsonValue(const QJsonValue &)>;
using Visitor = std::function<void(const QJsonValue &, const Rebuild &)>;

/// Visits a value and everything inside it.
void visit(const QJsonValue &value, const Rebuild &rebuild, const Visitor &visitor) {
    visitor(value, rebuild);
    const auto array = value.toArray();
    for (qsizetype at = 0; at < array.size(); ++at) {
        const auto replace = [&, at](const QJsonValue &other) {
            auto changed = array;
            changed[at] = other;
            return rebuild(changed);
        };
        visit(array[at], replace, visitor);
    }
    const auto object = value.toObject();
    for (const auto &key : object.keys()) {
        const auto replace = [&](const QJsonValue &other) {
            auto changed = object;
            changed[key] = other;
            return rebuild(changed);
        };
        visit(object[key], replace, visitor);
    }
}

class RecordFieldsTest : public testing::TestWithParam<RecordText> {
protected:
    const QJsonValue annotated = parsed(QByteArray::fromStdString(GetParam().annotated));

    void expectRefused(const QJsonValue &changed) const {
        const auto text = bytes(plain(changed));
        EXPECT_THROW(GetParam().recode(text, DateForm::millisecondsSince1970), DecodingError)
            << text.constData();
    }

    void expectReadAs(const QJsonValue &changed, const QJsonValue &expected) const {
        const auto text = bytes(plain(changed));
        try {
            const auto written = GetParam().recode(text, DateForm::millisecondsSince1970);
            EXPECT_EQ(parsed(written), plain(expected)) << text.constData() << "\nbecame\n"
                                                        << written.constData();
        } catch (const DecodingError &error) {
            ADD_FAILURE() << error.what() << "\n" << text.constData();
        }
    }

    void visitAll(const Visitor &visitor) const {
        visit(
            annotated, [](const QJsonValue &whole) { return whole; }, visitor);
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Records, RecordFieldsTest, testing::ValuesIn(recordTexts()),
                         [](const auto &record) { return record.param.name; });

TEST_P(RecordFieldsTest, EveryKeySurvivesInAnyOrderAndBothDateForms) {
    // Once in the order of the contract, once in the alphabet's.
    const auto contractOrder = GetParam().text();
    ASSERT_TRUE(parsed(contractOrder).isObject());
    EXPECT_EQ(parsed(GetParam().recode(contractOrder, DateForm::millisecondsSince1970)),
              parsed(contractOrder));
    expectReadAs(annotated, annotated);

    const auto written = GetParam().recode(contractOrder, DateForm::secondsSince2001);
    EXPECT_EQ(GetParam().recode(written, DateForm::secondsSince2001), written);
}

TEST_P(RecordFieldsTest, OnlyAnOptionalKeyMayBeMissingOrNull) {
    visitAll([&](const QJsonValue &value, const Rebuild &rebuild) {
        const auto object = value.toObject();
        for (const auto &key : object.keys()) {
            auto without = object;
            without.remove(key);
            auto withNull = object;
            withNull[key] = QJsonValue::Null;
            if (isOptionalKey(key) || isMapKey(key))
                expectReadAs(rebuild(without), rebuild(without));
            else
                expectRefused(rebuild(without));
            if (isOptionalKey(key))
                expectReadAs(rebuild(withNull), rebuild(without));
            else
                expectRefused(rebuild(withNull));
        }
    });
}

TEST_P(RecordFieldsTest, AValueOfAnotherTypeFailsTheWholeAlsoInAList) {
    visitAll([&](const QJsonValue &value, const Rebuild &rebuild) {
        const auto list = value.toArray();
        if (value.isArray())
            expectReadAs(rebuild(QJsonArray()), rebuild(QJsonArray()));
        for (const auto &other : oneOfEachType()) {
            if (other.type() != value.type() && !other.isNull())
                expectRefused(rebuild(other));
            if (!list.isEmpty() && other.type() != list.first().type()) {
                auto longer = list;
                longer.append(other);
                expectRefused(rebuild(longer));
            }
        }
    });
}

TEST_P(RecordFieldsTest, UnknownKeysAreIgnoredAndNotWrittenBack) {
    QJsonObject nested;
    for (const auto &value : oneOfEachType())
        nested.insert(QString::number(nested.size()), value);
    auto strangers = oneOfEachType();
    strangers.append(QJsonArray{nested, QJsonArray{nested}});
    strangers.append(QJsonObject{{QStringLiteral("id"), nested}});

    visitAll([&](const QJsonValue &value, const Rebuild &rebuild) {
        const auto object = value.toObject();
        if (object.isEmpty() || isMapKey(object.keys().first()))
            return;
        // Sorted before all keys, in their midst and after them; beginnings of keys are no keys.
        for (const auto *key : {"", "i", "idx", "\xC3\xA9"}) {
            for (const auto &stranger : strangers) {
                auto longer = object;
                longer.insert(QString::fromUtf8(key), stranger);
                expectReadAs(rebuild(longer), rebuild(object));
            }
        }
    });
}
