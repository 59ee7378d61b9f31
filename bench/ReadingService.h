#pragma once

#include "records/Catalogue.h"

#include <httplib.h>

#include <thread>

/// A service in a thread of its own with one long case under every name, and cards as many as one
/// asks for: the archive "many" has 100,000 of them, any other 1,000.
class ReadingService final {
public:
    ReadingService();
    ~ReadingService();
    Q_DISABLE_COPY_MOVE(ReadingService)

    QString base() const;

    /// Of about 46 KB.
    static CaseEntry longCase();

private:
    httplib::Server m_server;
    int m_port = 0;
    std::thread m_thread;
};
