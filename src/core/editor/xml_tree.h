#pragma once
// The XML tree of the editor's "XML Editor" tab: one entry per element, in document
// order, with its attributes and its text. Entry n (from 1) has the key "<n>nod", which
// is also its NodeKey. The tree is read once and then only looked at; names and text
// changed on the screen are kept beside it and never written to a file.

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "app/app_context.h"

namespace ferrolund::editor {

using NodeId = std::uint32_t;  // 0-based place in document order
inline constexpr NodeId kNoNode = UINT32_MAX;

struct XmlAttribute {
    std::string name;   // Windows-1252, as the screen shows it
    std::string value;
};

class XmlNodeTree {
public:
    XmlNodeTree();
    ~XmlNodeTree();
    XmlNodeTree(const XmlNodeTree&) = delete;
    XmlNodeTree& operator=(const XmlNodeTree&) = delete;

    // Reads the file. An empty or missing file gives an empty tree; a file that is not
    // well formed gives the elements read up to the fault, and the fault as an error.
    base::Status load(const std::string& xmlPath);
    base::Status loadText(const std::string& text);
    void clear();

    std::size_t count() const { return parents_.size(); }
    // The top entry is the document's element; kNoNode has it as its only child.
    std::size_t childCount(NodeId node) const;
    NodeId child(NodeId node, std::size_t row) const;
    NodeId parent(NodeId node) const { return node < count() ? parents_[node] : kNoNode; }
    std::size_t row(NodeId node) const { return node < count() ? rows_[node] : 0; }

    std::string key(NodeId node) const { return std::to_string(node + 1) + "nod"; }
    // SelectNode: the entry whose key is `key`, compared without case.
    NodeId find(const std::string& key) const;

    // NodeName, NodeAttributes and NodeCharacters (the element's text, its pieces joined).
    std::string name(NodeId node) const;
    std::vector<XmlAttribute> attributes(NodeId node) const;
    std::string characters(NodeId node) const;
    void setName(NodeId node, const std::string& name);
    void setCharacters(NodeId node, const std::string& text);

private:
    struct Document;
    void index();

    std::unique_ptr<Document> doc_;
    std::vector<NodeId> parents_;
    std::vector<std::uint32_t> rows_;
    std::vector<std::uint32_t> firstChild_;  // into children_
    std::vector<std::uint32_t> childCounts_;
    std::vector<NodeId> children_;
    std::unordered_map<NodeId, std::string> names_;
    std::unordered_map<NodeId, std::string> characters_;
};

// The tree's searches walk the entries by a 16-bit index: a longer tree is refused.
inline constexpr std::size_t kTreeSearchLimit = 65500;
inline constexpr const char* kTreeTooLong =
    "Unfortunately, this file is too long for this Search to work.\n"
    "Please open in the Ferrolund editor and run Search there.";

enum class TreeSearchField { EntryText, Characters };

// The three searches of the tab (Command2, Command3, Command4).
class TreeSearch {
public:
    std::string searchText;
    bool found = false;

    // Takes the search text and clears the found flag; tells the user and gives false
    // when the tree is too long to search.
    bool begin(app::AppContext& ctx, const XmlNodeTree& tree, const std::string& what);
    // The first entry from `from` on whose text holds the search text, without case.
    NodeId next(const XmlNodeTree& tree, TreeSearchField field, NodeId from);
    // Find (Command2) and Find in Text (Command4): each hit goes to `onFound`, which gives
    // true to go on to the next.
    void walk(app::AppContext& ctx, const XmlNodeTree& tree, const std::string& what, TreeSearchField field,
              const std::function<bool(NodeId)>& onFound);
    // Find All (Command3): every hit; "Not found" when there is none.
    std::vector<NodeId> findAll(app::AppContext& ctx, const XmlNodeTree& tree, const std::string& what);
};

// What the tab keeps besides the tree: the entry selected, the guard that is up while
// the boxes are filled from an entry, and the changed mark.
class XmlTreeEditor {
public:
    XmlNodeTree tree;
    NodeId selected = kNoNode;
    bool updatingFromNode = false;
    bool dirty = false;
    std::unordered_set<NodeId> bold;  // entries a search marked

    struct Boxes {
        std::vector<std::string> attributeNames;
        std::string characters;
    };
    // A click on an entry; kNoNode when the key names none.
    Boxes select(const std::string& key);
    // The value of the selected entry's attribute at `row`; empty past the end.
    std::string attributeValue(std::size_t row) const;
    // The characters box changed: kept in the entry, and the tab marked, unless the box
    // is being filled from an entry.
    void charactersChanged(const std::string& text);
    // A new name for an entry; a name holding a blank is refused with a warning.
    bool rename(app::AppContext& ctx, NodeId node, const std::string& newName);
};

// SetDirty: the tab's title with one mark at its end, or without a last mark.
std::string WithDirtyMark(const std::string& title, bool dirty);

}  // namespace ferrolund::editor
