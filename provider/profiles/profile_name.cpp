// Names stand between brackets in a line of the profiles file, and programs show them whole.
#include "profiles/profile_name.h"

#include "failure.h"
#include "mapi/entry_points.h"
#include "text/ascii.h"
#include "text/code_pages.h"
#include "text/control_characters.h"

std::string FaultOfNewName(std::string_view name) {
    if (name.empty()) return "it is empty";
    // U+FFFD stands for what could not be read.
    if (!IsUtf8(name) || name.find("\uFFFD") != name.npos) return "it is no text";
    if (HasControls(name)) return "it has a control character";
    if (Trimmed(name) != name) return "it begins or ends with a blank";
    // Counted in UTF-8, which takes no less than any code page, so that the same names are allowed to every program.
    if (name.size() > longestProfileName)
        return "it takes " + std::to_string(name.size()) + " bytes in UTF-8, and " +
               std::to_string(longestProfileName) + " are the most";
    return {};
}

std::string ProfileNameOfCaller(std::string_view name, HRESULT otherwise) {
    std::string utf8;
    Require(AppendAsUtf8(name, GetACP(), utf8), otherwise);
    return utf8;
}
