#pragma once

#include "records/Catalogue.h"

#include <QByteArray>

/// A case as a page for the browser: where a shared address leads. It loads nothing and runs
/// nothing.
namespace CasePage {

/// The one style that the page holds.
QByteArray style();

QByteArray html(const CaseEntry &entry);

} // namespace CasePage
