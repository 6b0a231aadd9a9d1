// The rows by which a studio set is reviewed.
#pragma once

#include <string>
#include <vector>

#include "ReviewDlg.h"
#include "StudioSets.h"

std::vector<ReviewColumn> StudioSetColumns();

/// The first rows stand for the parts of the set, in this order.
enum class SavedRow { Exclusions, Names, Layouts, Presets };
/// Exclusions have no box: a set without them could not be told from one where nothing is excluded.
std::vector<ReviewRow> RowsOf(const SetToSave& save, const std::wstring& noLayoutFolder);

/// What is loaded or can be. `entries` gets the index of each row's entry; the rows behind those only tell.
std::vector<ReviewRow> RowsOf(const SetToLoad& load, std::vector<std::size_t>& entries);
