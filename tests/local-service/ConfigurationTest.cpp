#include "Configuration.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace {

int portOf(const QByteArray &text) {
    QTemporaryDir directory;
    const auto path = directory.filePath(QStringLiteral("service.json"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    return Configuration::read(path).port;
}

TEST(Configuration, ReadsThePortOrSaysWhatIsWrong) {
    EXPECT_EQ(Configuration::read(QStringLiteral("/nowhere/service.json")).port, 4310);
    EXPECT_EQ(portOf("{}"), 4310);
    EXPECT_EQ(portOf(R"({"port": 0, "unheard": []})"), 0);
    EXPECT_EQ(portOf(R"({"port": 65535})"), 65535);
    for (const char *broken : {"", "[]", "{", R"({"port": "80"})", R"({"port": -1})",
                               R"({"port": 65536})", R"({"port": true})", R"({"port": 80} x)"})
        EXPECT_THROW(portOf(broken), ConfigurationError) << broken;
}

} // namespace
