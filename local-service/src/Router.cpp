#include "Router.h"

#include <optional>

namespace {

/// What the placeholders of the pattern stand for, where the path fits it.
std::optional<QStringList> fit(const QStringList &pattern, const QStringList &path) {
    if (pattern.size() != path.size())
        return std::nullopt;
    QStringList arguments;
    for (qsizetype index = 0; index < path.size(); ++index) {
        if (pattern[index] == QLatin1String("*") && !path[index].isEmpty())
            arguments.append(path[index]);
        else if (pattern[index] != path[index])
            return std::nullopt;
    }
    return arguments;
}

} // namespace

void Router::add(const QByteArray &method, const QString &pattern, Handler handler) {
    m_routes.push_back({method, pattern.split(QLatin1Char('/')), std::move(handler)});
}

Router::Match Router::find(const std::string &method, const std::string &path) const {
    const QByteArray wanted = method == "HEAD" ? "GET" : QByteArray::fromStdString(method);
    const auto segments = QString::fromStdString(path).split(QLatin1Char('/'));
    QByteArrayList allowed;
    for (const Route &route : m_routes) {
        auto arguments = fit(route.segments, segments);
        if (!arguments)
            continue;
        if (route.method == wanted)
            return {&route.handler, std::move(*arguments)};
        allowed.append(route.method == "GET" ? "GET, HEAD" : route.method);
    }
    if (allowed.isEmpty())
        throw RequestError::notFound();
    throw RequestError::methodNotAllowed(allowed.join(", "));
}
