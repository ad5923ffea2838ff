// The inserts a translation must keep: the same insert numbers, each with the
// same format, in any order. The inserts are read by the library's own
// classifier, exactly as the formatter reads them.
#ifndef TQMSG_PO_INSERT_CHECK_H
#define TQMSG_PO_INSERT_CHECK_H

#include <set>
#include <string>
#include <utility>

// Each (insert number, format) a text uses, once; "%1" and "%1!s!" both have
// the format "%s".
using InsertSet = std::set<std::pair<int, std::string>>;

// The inserts of `text`. Throws MessageModuleException with the formatter's
// text when the formatter would refuse `text`.
InsertSet insertsOf(const std::string& text);

// "%1, %2!lu!": the inserts as a translator writes them; "" for none.
std::string insertList(const InsertSet& inserts);

// What `translation` does to the inserts of `source`, in words ("loses %3",
// "adds %4", "changes %2!lu! to %2!d!"); "" when it keeps them all.
std::string insertChanges(const InsertSet& source, const InsertSet& translation);

#endif  // TQMSG_PO_INSERT_CHECK_H
