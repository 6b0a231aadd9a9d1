// Which plug-ins are there more than once.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "StudioPlugin.h"

enum class DuplicateKind {
    AlsoVst3,        // a VST whose VST3 is there, too
    SameTwice,       // the same file and name under another class id
    MayBothBeRight,  // the same vendor, name and category otherwise: the user knows, nobody else
};

/// Indexes into the plug-ins.
struct Duplicate {
    std::size_t plugin = 0;
    std::size_t original = 0;  // what stays; of several the first
    DuplicateKind kind = DuplicateKind::MayBothBeRight;
};

/// Of a text all of whose spellings mean the same.
using FoldText = std::function<std::wstring(const std::wstring&)>;

/// Of names and vendors, and of paths, where every letter counts in either case.
struct TextFolds {
    FoldText text;
    FoldText path;
};

/// In ascending order of the plug-ins; none comes twice, and none is an original and a duplicate of the same
/// kind. What is excluded or can't be excluded counts neither as the one nor as the other, nor does what
/// `isThere`, asked by index, says is not there: for what else is left would be lost with its duplicate.
std::vector<Duplicate> FindDuplicates(std::span<const StudioPlugin> plugins,
                                      const std::function<bool(std::size_t)>& isThere, const TextFolds& fold);

/// Without the blanks around it, and folded: what names and vendors are compared by.
std::wstring ComparedText(const std::wstring& text, const FoldText& fold);
