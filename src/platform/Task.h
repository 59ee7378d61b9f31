#pragma once

#include <qcoro/qcorotask.h>

/// An operation that waits. It runs at once up to its first wait; whoever holds it awaits it or
/// hands it to start().
template <class Result = void>
using Task = QCoro::Task<Result>;
