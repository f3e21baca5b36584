#pragma once

#include "panels/column_list.h"

namespace shell {

// The memory columns that the grid shows, as they were stored at the last exit; the default ones where nothing is
// stored, and a sound list where the store is damaged.
panels::ColumnList ReadColumns();

void SaveColumns(const panels::ColumnList& columns);

}  // namespace shell
