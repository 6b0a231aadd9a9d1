// Which page of the help file tells about what.
#pragma once

#include <optional>
#include <span>
#include <string_view>

struct HelpTopic {
    unsigned id;
    std::wstring_view page;
};

/// By the dialog's template, and by the control within the main dialog.
std::span<const HelpTopic> DialogTopics();
std::span<const HelpTopic> ControlTopics();

/// The page for the number that a help request comes with; nothing for any other number.
std::optional<std::wstring_view> HelpPageOf(unsigned context);
