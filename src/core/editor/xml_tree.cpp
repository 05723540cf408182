#include "editor/xml_tree.h"

#include <pugixml.hpp>

#include "tools/codepage.h"
#include "tools/files.h"
#include "tools/text_search.h"

namespace ferrolund::editor {

namespace {
constexpr int kInvalidFile = 5;  // invalid procedure call or argument
constexpr const char* kDirtyMark = "*";
}  // namespace

struct XmlNodeTree::Document {
    pugi::xml_document xml;
    std::vector<pugi::xml_node> elements;  // by NodeId
};

XmlNodeTree::XmlNodeTree() : doc_(std::make_unique<Document>()) {}
XmlNodeTree::~XmlNodeTree() = default;

void XmlNodeTree::clear() {
    doc_ = std::make_unique<Document>();
    parents_.clear();
    rows_.clear();
    firstChild_.clear();
    childCounts_.clear();
    children_.clear();
    names_.clear();
    characters_.clear();
}

base::Status XmlNodeTree::load(const std::string& xmlPath) { return loadText(tools::ReadTextFile(xmlPath)); }

base::Status XmlNodeTree::loadText(const std::string& text) {
    clear();
    if (text.empty()) return std::nullopt;
    const pugi::xml_parse_result result =
        doc_->xml.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_auto);
    // What was read before a fault stays in the tree.
    index();
    if (result) return std::nullopt;
    return base::RunError{kInvalidFile, std::string("The XML text could not be read: ") + result.description() +
                                           " at character " + std::to_string(result.offset + 1)};
}

// Numbers the elements in document order and lists each one's children.
void XmlNodeTree::index() {
    std::vector<pugi::xml_node>& elements = doc_->elements;
    pugi::xml_node top = doc_->xml.document_element();
    if (!top) return;
    // Depth first, without recursion: deep files must not exhaust the stack.
    std::vector<std::pair<pugi::xml_node, NodeId>> stack{{top, kNoNode}};
    while (!stack.empty()) {
        auto [node, parent] = stack.back();
        stack.pop_back();
        const NodeId id = static_cast<NodeId>(elements.size());
        elements.push_back(node);
        parents_.push_back(parent);
        for (pugi::xml_node c = node.last_child(); c; c = c.previous_sibling()) {
            if (c.type() == pugi::node_element) stack.emplace_back(c, id);
        }
    }
    const std::size_t n = elements.size();
    childCounts_.assign(n, 0);
    for (std::size_t i = 1; i < n; ++i) ++childCounts_[parents_[i]];
    firstChild_.assign(n, 0);
    std::uint32_t offset = 0;
    for (std::size_t i = 0; i < n; ++i) {
        firstChild_[i] = offset;
        offset += childCounts_[i];
    }
    children_.assign(offset, 0);
    rows_.assign(n, 0);
    std::vector<std::uint32_t> filled(n, 0);
    for (std::size_t i = 1; i < n; ++i) {
        const NodeId p = parents_[i];
        rows_[i] = filled[p]++;
        children_[firstChild_[p] + rows_[i]] = static_cast<NodeId>(i);
    }
}

std::size_t XmlNodeTree::childCount(NodeId node) const {
    if (node == kNoNode) return count() > 0 ? 1 : 0;
    return node < count() ? childCounts_[node] : 0;
}

NodeId XmlNodeTree::child(NodeId node, std::size_t row) const {
    if (row >= childCount(node)) return kNoNode;
    if (node == kNoNode) return 0;
    return children_[firstChild_[node] + row];
}

NodeId XmlNodeTree::find(const std::string& key) const {
    // Keys are "<n>nod"; any other text names no entry.
    const std::string lower = tools::LowerCp1252(key);
    if (lower.size() < 4 || lower.compare(lower.size() - 3, 3, "nod") != 0) return kNoNode;
    std::size_t number = 0;
    for (std::size_t i = 0; i + 3 < lower.size(); ++i) {
        const char c = lower[i];
        if (c < '0' || c > '9' || number > count()) return kNoNode;
        number = number * 10 + static_cast<std::size_t>(c - '0');
    }
    if (number == 0 || number > count()) return kNoNode;
    const NodeId node = static_cast<NodeId>(number - 1);
    return lower == this->key(node) ? node : kNoNode;
}

std::string XmlNodeTree::name(NodeId node) const {
    if (node >= count()) return {};
    if (auto it = names_.find(node); it != names_.end()) return it->second;
    return doc_->elements[node].name();
}

std::vector<XmlAttribute> XmlNodeTree::attributes(NodeId node) const {
    std::vector<XmlAttribute> list;
    if (node >= count()) return list;
    for (pugi::xml_attribute a : doc_->elements[node].attributes()) {
        list.push_back({a.name(), a.value()});
    }
    return list;
}

std::string XmlNodeTree::characters(NodeId node) const {
    if (node >= count()) return {};
    if (auto it = characters_.find(node); it != characters_.end()) return it->second;
    std::string text;
    for (pugi::xml_node c : doc_->elements[node].children()) {
        if (c.type() == pugi::node_pcdata || c.type() == pugi::node_cdata) text += c.value();
    }
    return text;
}

void XmlNodeTree::setName(NodeId node, const std::string& name) {
    if (node < count()) names_[node] = name;
}

void XmlNodeTree::setCharacters(NodeId node, const std::string& text) {
    if (node < count()) characters_[node] = text;
}

bool TreeSearch::begin(app::AppContext& ctx, const XmlNodeTree& tree, const std::string& what) {
    searchText = what;
    found = false;
    if (tree.count() > kTreeSearchLimit) {
        ctx.ui->message(kTreeTooLong, base::Icon::Exclamation);
        return false;
    }
    return true;
}

NodeId TreeSearch::next(const XmlNodeTree& tree, TreeSearchField field, NodeId from) {
    for (NodeId id = from; id < tree.count(); ++id) {
        const std::string text = field == TreeSearchField::EntryText ? tree.name(id) : tree.characters(id);
        if (tools::InStr(text, searchText) > 0) {
            found = true;
            return id;
        }
    }
    return kNoNode;
}

void TreeSearch::walk(app::AppContext& ctx, const XmlNodeTree& tree, const std::string& what,
                      TreeSearchField field, const std::function<bool(NodeId)>& onFound) {
    if (!begin(ctx, tree, what)) return;
    for (NodeId id = next(tree, field, 0); id != kNoNode; id = next(tree, field, id + 1)) {
        if (!onFound(id)) return;
    }
}

std::vector<NodeId> TreeSearch::findAll(app::AppContext& ctx, const XmlNodeTree& tree, const std::string& what) {
    std::vector<NodeId> hits;
    if (!begin(ctx, tree, what)) return hits;
    for (NodeId id = next(tree, TreeSearchField::EntryText, 0); id != kNoNode;
         id = next(tree, TreeSearchField::EntryText, id + 1)) {
        hits.push_back(id);
    }
    if (!found) ctx.ui->message("Not found", base::Icon::None);
    return hits;
}

XmlTreeEditor::Boxes XmlTreeEditor::select(const std::string& key) {
    Boxes boxes;
    selected = tree.find(key);
    if (selected == kNoNode) return boxes;
    for (const XmlAttribute& a : tree.attributes(selected)) boxes.attributeNames.push_back(a.name);
    boxes.characters = tree.characters(selected);
    return boxes;
}

std::string XmlTreeEditor::attributeValue(std::size_t row) const {
    const std::vector<XmlAttribute> list = tree.attributes(selected);
    return row < list.size() ? list[row].value : std::string();
}

void XmlTreeEditor::charactersChanged(const std::string& text) {
    // While the boxes are filled (and emptied first) nothing is kept: the box then holds
    // the entry's own text or nothing, and the entry must not lose its text to it.
    if (updatingFromNode) return;
    if (selected != kNoNode) tree.setCharacters(selected, text);
    dirty = true;
}

bool XmlTreeEditor::rename(app::AppContext& ctx, NodeId node, const std::string& newName) {
    if (newName.find(' ') != std::string::npos) {
        ctx.ui->message("Node names cannot have spaces!", base::Icon::Exclamation, "Invalid character");
        return false;
    }
    tree.setName(node, newName);
    dirty = true;
    return true;
}

std::string WithDirtyMark(const std::string& title, bool dirty) {
    const bool marked = title.size() >= 1 && title.back() == kDirtyMark[0];
    if (dirty) return marked ? title : title + kDirtyMark;
    return marked ? title.substr(0, title.size() - 1) : title;
}

}  // namespace ferrolund::editor
