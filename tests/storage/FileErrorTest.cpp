#include "platform/FileError.h"

#include "copy/Copy.h"

#include <QSet>

#include <gtest/gtest.h>

TEST(FileError, eachCodeHasANameAndASentenceThatTheTablesHold) {
    QSet<QString> names;
    for (int code = 0; code <= static_cast<int>(FileError::Code::unknown); ++code) {
        const FileError error(static_cast<FileError::Code>(code));
        const auto name = FileError::name(error.code());
        names.insert(name);
        EXPECT_EQ(Copy::text(QLatin1String("fileError.") + name, AppLanguage::en),
                  error.localizedDescription());
    }
    EXPECT_EQ(names.size(), static_cast<int>(FileError::Code::unknown) + 1);
    EXPECT_EQ(FileError::ofSystem(123456).code(), FileError::Code::unknown);
}
