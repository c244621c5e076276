// What all pages have in common: they work offline, load nothing, and show names as text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace web {

/// UTF-8 as the text of an element or the value of an attribute in double quotes.
std::string escaped(std::string_view words);

/// An HTML page up to its `<body>`. It may load nothing but what `images`, a source of the
/// Content-Security-Policy such as "data:", allows; empty: nothing at all. `style` is CSS that
/// follows the common one; `title` may hold any character.
std::string pageStart(std::string_view title, std::string_view style, std::string_view images);

/// A list of messages, each as a text of its own; empty where there are none.
std::string messageList(const std::vector<std::string>& messages);

/// A page that has only messages, under the name of what they are about.
std::string messagePage(std::string_view name, const std::vector<std::string>& messages);

}  // namespace web
