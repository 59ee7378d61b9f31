#include "platform/URLError.h"
#include "copy/Copy.h"

#include <gtest/gtest.h>

#include <set>

TEST(URLError, everyCodeHasItsNameAndTheSentenceOfTheEnglishTable) {
    std::set<QString> names;
    for (int code = 0; code <= static_cast<int>(URLError::Code::unknown); ++code) {
        const URLError error(static_cast<URLError::Code>(code));
        const auto name = URLError::name(error.code());
        EXPECT_TRUE(names.insert(name).second) << "twice: " << qPrintable(name);
        const auto key = QLatin1String("urlError.") + name;
        EXPECT_EQ(Copy::table(AppLanguage::en).value(key), error.localizedDescription())
            << qPrintable(key);
        EXPECT_FALSE(error.localizedDescription().isEmpty());
    }
}
