#include "editor/window/KeyNames.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace editor {

namespace {

/// What the toolkit calls a key, and what it is called here.
constexpr std::array<std::pair<std::string_view, QStringView>, 9> Names{{{"Ins", u"Insert"},
                                                                         {"Del", u"Delete"},
                                                                         {"Return", u"Enter"},
                                                                         {"PgUp", u"PageUp"},
                                                                         {"PgDown", u"PageDown"},
                                                                         {"Left", u"←"},
                                                                         {"Right", u"→"},
                                                                         {"Up", u"↑"},
                                                                         {"Down", u"↓"}}};

} // namespace

/// Null for what is no such key: another translator may know it.
QString KeyNames::translate(const char* context, const char* text, const char*, int) const
{
    if (context == nullptr || text == nullptr || std::string_view(context) != "QShortcut") return {};
    const auto found =
        std::find_if(Names.begin(), Names.end(), [text](const auto& name) { return name.first == text; });
    return found == Names.end() ? QString() : found->second.toString();
}

} // namespace editor
