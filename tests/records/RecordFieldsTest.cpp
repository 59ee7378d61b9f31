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

/// Visits every value of a text in turn, with a function that gives the whole text with another
/// value in its place.
class Walk {
public:
    using Rebuild = std::function<QJsonValue(const QJsonValue &)>;
    /// Takes a key's object, the key, and the function that replaces the object.
    std::function<void(const QJsonObject &, const QString &, const Rebuild &)> visitKey =
        [](auto &&...) {};
    std::function<void(const QJsonValue &, const Rebuild &)> visitValue = [](auto &&...) {};
    std::function<void(const QJsonObject &, const Rebuild &)> visitObject = [](auto &&...) {};

    void run(const QJsonValue &value, const Rebuild &rebuild) const {
        if (value.isArray()) {
            const auto array = value.toArray();
            for (qsizetype at = 0; at < array.size(); ++at) {
                step(array[at], [=](const QJsonValue &other) {
                    auto changed = array;
                    changed[at] = other;
                    return rebuild(changed);
                });
            }
        } else if (value.isObject()) {
            const auto object = value.toObject();
            visitObject(object, rebuild);
            for (const auto &key : object.keys()) {
                visitKey(object, key, rebuild);
                step(object[key], [=](const QJsonValue &other) {
                    auto changed = object;
                    changed[key] = other;
                    return rebuild(changed);
                });
            }
        }
    }

private:
    void step(const QJsonValue &value, const Rebuild &rebuild) const {
        visitValue(value, rebuild);
        run(value, rebuild);
    }
};

QJsonValue itself(const QJsonValue &value) {
    return value;
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

    void walk(const Walk &walk) const { walk.run(annotated, itself); }
};

std::string recordName(const testing::TestParamInfo<RecordText> &info) {
    return info.param.name;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Records, RecordFieldsTest, testing::ValuesIn(recordTexts()), recordName);

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
    Walk keys;
    keys.visitKey = [&](const QJsonObject &object, const QString &key,
                        const Walk::Rebuild &rebuild) {
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
    };
    walk(keys);
}

TEST_P(RecordFieldsTest, AValueOfAnotherTypeFailsTheWhole) {
    Walk values;
    values.visitValue = [&](const QJsonValue &value, const Walk::Rebuild &rebuild) {
        for (const auto &other : oneOfEachType()) {
            if (other.type() != value.type() && !other.isNull())
                expectRefused(rebuild(other));
        }
    };
    walk(values);
}

TEST_P(RecordFieldsTest, AListMayBeEmptyButHoldsNothingOfAnotherType) {
    Walk lists;
    lists.visitValue = [&](const QJsonValue &value, const Walk::Rebuild &rebuild) {
        if (!value.isArray())
            return;
        expectReadAs(rebuild(QJsonArray()), rebuild(QJsonArray()));
        for (const auto &other : oneOfEachType()) {
            auto longer = value.toArray();
            if (longer.isEmpty() || other.type() == longer.first().type())
                continue;
            longer.append(other);
            expectRefused(rebuild(longer));
        }
    };
    walk(lists);
}

TEST_P(RecordFieldsTest, UnknownKeysAreIgnoredAndNotWrittenBack) {
    QJsonObject nested;
    for (const auto &value : oneOfEachType())
        nested.insert(QString::number(nested.size()), value);
    auto strangers = oneOfEachType();
    strangers.append(QJsonArray{nested, QJsonArray{nested}});
    strangers.append(QJsonObject{{QStringLiteral("id"), nested}});

    Walk objects;
    objects.visitObject = [&](const QJsonObject &object, const Walk::Rebuild &rebuild) {
        if (!object.isEmpty() && isMapKey(object.keys().first()))
            return;
        // Sorted before all keys, in their midst and after them; beginnings of keys are no keys.
        for (const auto *key : {"", "i", "idx", "\xC3\xA9"}) {
            for (const auto &value : strangers) {
                auto longer = object;
                longer.insert(QString::fromUtf8(key), value);
                expectReadAs(rebuild(longer), rebuild(object));
            }
        }
    };
    walk(objects);
}
