#pragma once

#include "copy/Copy.h"
#include "platform/QtTransport.h"
#include "tests/screens/OpenWindow.h"
#include "tests/support/Await.h"
#include "tests/support/LocalServiceProcess.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

#include <memory>

/// The program's window on the real service.
class ServiceWindow : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_service.start());
        open(m_service.base());
    }

    /// Opens the window on a service at the address.
    void open(const QString &base) {
        m_system.preferences.setValue(QStringLiteral("server"), base);
        m_store = std::make_unique<AppStore>(m_system.platform());
        m_window = std::make_unique<OpenWindow>(*m_store);
        ASSERT_NE(m_window->window(), nullptr);
    }

    void activate() {
        m_window->window()->requestActivate();
        ASSERT_TRUE(eventually([&] { return m_window->window()->isActive(); }));
    }

    static QString english(const char *key) {
        return Copy::text(QLatin1String(key), AppLanguage::en);
    }

    LocalServiceProcess m_service;
    TestPlatform<QtTransport> m_system;
    const Appearance m_appearance{m_system.preferences, m_system.appearance};
    std::unique_ptr<AppStore> m_store;
    std::unique_ptr<OpenWindow> m_window;
};
