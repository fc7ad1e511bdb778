// An extended dialog template (DLGTEMPLATEEX): its caption and its controls' ids and texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct DialogControl {
    int id = 0;
    std::string text;  // UTF-8; empty for a control that shows a resource
};

struct DialogTemplate {
    std::string caption;  // UTF-8
    std::vector<DialogControl> controls;
};

// Nothing when the bytes are another kind of template or end too early.
std::optional<DialogTemplate> ReadDialogTemplate(std::string_view bytes);
