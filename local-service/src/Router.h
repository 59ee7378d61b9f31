#pragma once

#include "Call.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <string>
#include <vector>

/// Which handler answers which request. Each subject adds its own routes; from then on the table is
/// only read, by all threads.
class Router final {
public:
    using Handler = std::function<void(Call &)>;

    struct Match {
        const Handler *handler;
        QStringList arguments;
    };

    /// A segment "*" of the pattern stands for any one segment that is not empty. What answers GET
    /// answers HEAD as well.
    void add(const QByteArray &method, const QString &pattern, Handler handler);

    /// Throws RequestError when nothing answers.
    Match find(const std::string &method, const std::string &path) const;

private:
    struct Route {
        QByteArray method;
        QStringList segments;
        Handler handler;
    };

    std::vector<Route> m_routes;
};
