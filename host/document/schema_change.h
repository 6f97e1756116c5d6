#pragma once

#include "host/document/catalog.h"
#include "host/document/plan.h"
#include "host/document/syntax.h"

namespace refhost {

/// The plan of a statement that changes the schema. Throws Refusal.
Plan schemaPlan(Dialect dialect, Catalog& catalog, const syntax::Statement& statement);

} // namespace refhost
