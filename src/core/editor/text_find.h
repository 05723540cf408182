#pragma once
// Search and replace in a text pane, as dlgSearch does it. Positions here are those of a
// pane's selection: 0-based, -1 for "not found". Searching ignores case through the code
// page's fold.

#include <string>
#include <string_view>

namespace ferrolund::editor {

// The pane's Find: the first `what` at or after `start`. With `wholeWord` a hit must
// neither follow nor precede a letter, digit or underscore. An empty `what` finds nothing.
long FindInText(std::string_view text, std::string_view what, long start, bool wholeWord);

// What the search commands need of a pane.
class SearchPane {
public:
    virtual ~SearchPane() = default;
    virtual std::string text() const = 0;
    virtual long selStart() const = 0;
    // An empty selection at `position`.
    virtual void setSelStart(long position) = 0;
    // Finds from `start` and selects the hit; -1 leaves the selection as it was.
    virtual long find(std::string_view what, long start, bool wholeWord) = 0;
    // The selection becomes `text`; the caret stands behind it.
    virtual void replaceSelection(std::string_view text) = 0;
    // The whole text becomes `text`, as one step the user can undo.
    virtual void replaceText(const std::string& text) = 0;
};

struct ReplaceAllResult {
    long count = 0;  // replacements made
    long caret = 1;  // where the caret stands afterwards
};

// Replace All on text in memory: the search starts at 2 (the caret put at 1, plus one),
// and after each replacement one behind the caret, which then stands behind the new text.
// A replacement that holds the searched text is thus never searched again, so the run
// ends. Whole words play no part.
ReplaceAllResult ReplaceAllInText(std::string& text, std::string_view what, std::string_view with);

// dlgSearch's commands and its two values. An empty search or replacement text makes a
// command do nothing.
class TextSearch {
public:
    long searchStart = 0;   // where the last search started
    long searchFound = -1;  // the last hit, -1 for none

    // Find (Command4): from position 1.
    void find(SearchPane& pane, std::string_view what, bool wholeWord);
    // Find Next (Command2): from one behind the caret.
    void findNext(SearchPane& pane, std::string_view what, bool wholeWord);
    // Replace (Command5): the selection becomes the replacement; nothing moves on.
    void replace(SearchPane& pane, std::string_view with);
    // Replace All (Command6); gives the number of replacements.
    long replaceAll(SearchPane& pane, std::string_view what, std::string_view with);
};

}  // namespace ferrolund::editor
