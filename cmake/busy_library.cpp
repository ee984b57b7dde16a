/// What every source uses of the library, compiled once with the options of the busy floors. A
/// linker keeps the first of equal functions, and this object stands first: sources that are not
/// optimised call these as well.
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

template class std::basic_string<char>;
template class std::basic_string_view<char>;
template class std::vector<char>;
template class std::vector<std::string>;
template class std::map<std::string, std::string>;
template class std::set<std::string>;
