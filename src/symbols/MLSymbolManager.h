// What the engine knows about the language of the document in hand: the one table of
// elements of the process, the hidden root, the attribute editors, the entities, and
// which schema all that came from. It follows whatever document is being parsed.
//
//     FindTag("ul")   ->   the element ul, whose children are li (and closing tags)
//
// The hidden root, "<!--root-->", answers what may stand at the top of a document:
// its children are the elements that no other element contains.
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "markup/MLParserUtils.h"
#include "parser/ElementTable.h"
#include "symbols/ContextFixups.h"
#include "symbols/DocumentRoad.h"
#include "symbols/SchemaSelection.h"
#include "tagmodel/AsciiCharList.h"
#include "tagmodel/HTMLTag.h"
#include "tagmodel/TagContext.h"

namespace caretwell {

class TDTDParser;
class TMLParser;
enum TParseError : uint8_t;

/// One attribute with an editor.
struct TTagAttributeBucket {
    TRef<INibMLTagAttribute> Attribute;
    TRef<INibMLEditor> Editor;
};

class TMLSymbolManager final : public ITagContext {
public:
    TMLSymbolManager();
    ~TMLSymbolManager();
    TMLSymbolManager(const TMLSymbolManager&) = delete;
    TMLSymbolManager& operator=(const TMLSymbolManager&) = delete;

    // ---- The table. A second tag of one name is dropped without a word.

    void ClearTags();
    /// Puts the table away under a key, as it is with no list open, and leaves an empty one: going
    /// to and fro between documents makes nothing anew. The oldest of the few kept goes.
    void PutTableAway(const std::string& key);
    /// Takes the table of that key back in the place of an empty one. False if none was kept.
    bool TakeTableBack(const std::string& key);
    void SetHiddenRootNode(TRef<THTMLTag> tag) { FTable.SetRoot(std::move(tag)); }
    THTMLTag* GetHiddenRootNode() const { return FTable.GetRoot(); }
    TElementTable& GetTable() { return FTable; }
    /// Enters the tag without a test for duplicates.
    void AddElement(TRef<INibMLTag> tag);
    void RemoveElement(INibMLTag* tag);
    void RegisterTag(TRef<INibMLTag> tag);
    void UnRegisterTag(INibMLTag* tag) { RemoveElement(tag); }
    /// Owns a tag that stands as a child but not in the table, so that it is emptied with the rest.
    void KeepTag(TRef<INibMLTag> tag) { FLooseTags.push_back(std::move(tag)); }
    /// What a name in a document means; null if the schema has no such element.
    TRef<INibMLTag> GetTagFromHashList(std::u16string_view name) const;
    /// The same for a name as bytes, with its key at hand; borrowed.
    TTagBucket* FindBucket(const TNameKey& key, std::string_view name) const {
        return FTable.FindBucket(key, name);
    }
    TTagBucket* FindBucket(std::u16string_view name) const { return FTable.FindBucket(name); }
    /// Registered tags, in order of registration, closing tags included.
    const std::vector<TRef<INibMLTag>>& GetTagList() const { return FTagList; }

    // ---- Editors.

    void RegisterEditor(TRef<INibMLTag> tag, TRef<INibMLEditor> editor);
    void UnRegisterEditor(INibMLEditor* editor);
    TRef<INibMLEditor> GetTagEditorFromHashList(std::u16string_view name) const;
    /// The editor that the registry gives for a word; never null.
    TRef<INibMLEditor> GetAttributeEditor(std::string_view name) const;
    /// There is no test for duplicates; the newest is found first.
    void RegisterAttributeEditor(TRef<INibMLTagAttribute> attribute, TRef<INibMLEditor> editor);
    void UnRegisterAttributeEditor(INibMLEditor* editor);
    /// The editor of an attribute of a tag, the attribute being hidden or not; null if none.
    TRef<INibMLEditor> GetAttributeEditorFromHashList(std::u16string_view attributeName,
                                                      TRef<INibMLTagAttribute>& attribute,
                                                      std::u16string_view tagName) const;

    // ---- The parser's view.

    TMLParser& GetParser() const { return *FParser; }
    TSchemaSelection& GetSelection() { return FSelection; }
    /// The start of a parse: what the last one changed is taken back.
    void BeginDocument(const std::string& fileName);
    /// The parser's current tag, or the hidden root at the top level. Null before any schema.
    TRef<INibMLTag> GetCurrentTag() const;
    /// The tag whose children or attributes the list shows. Null before any schema.
    TRef<INibMLTag> GetListOwner() const;
    /// Entry of the element list; null if there is none.
    TRef<INibMLTag> GetMLTag(int32_t index) const;
    /// Line of the opening tag behind a closing tag of the list; 0 for other entries.
    int32_t GetLineNumber(int32_t index) const;
    /// True if this very attribute is written on the current tag.
    bool FindTagAttr(const INibMLTagAttribute* attribute) const;

    // ---- Case of names.

    TTagCase GetTagCase() const override { return FTagCase; }
    void SetTagCase(TTagCase value) { FTagCase = value; }
    std::u16string CaseTag(std::u16string_view name) override;

    // ---- Closing tags and hidden attributes.

    int32_t GetClosedTagsCount() const { return static_cast<int32_t>(FClosedTags.size()); }
    TRef<INibMLTag> GetCloseTags(int32_t index) const;
    void DeleteClosedTag(int32_t index);
    void AddClosedTag(TRef<INibMLTag> tag) { FClosedTags.push_back(std::move(tag)); }
    void ClearClosedTags() { FClosedTags.clear(); }
    int32_t InsertCustomElements(std::vector<TRef<INibMLTag>>& list, THTMLTag& tag) override;
    int32_t RemoveCustomElements(std::vector<TRef<INibMLTag>>& list, THTMLTag& tag) override;
    int32_t GetHiddenAttrCount() const { return FFixups.GetHiddenAttrCount(); }
    TRef<INibMLTagAttribute> GetHiddenAttrs(int32_t index) const { return FFixups.GetHiddenAttr(index); }
    TRef<INibMLTagAttribute> FindHiddenAttr(std::u16string_view name) const {
        return FFixups.FindHiddenAttr(name);
    }

    // ---- Context: what the list at a caret shows beside the schema's own entries.

    /// Puts in what the document allows at the caret beside the children of tag (with
    /// parent, if it is not null, a tag around it that lets more in), and hides attributes that
    /// are written. A null tag does nothing.
    void InsertFixupElements(INibMLTag* tag, INibMLTag* parent);
    /// Takes back the entries that the last parse added or hid, on whichever tags.
    void RemoveFixupElements(INibMLTag* tag);
    /// The same, and puts back all ranges and filters: the start of a parse.
    void ResetLists();
    static const std::vector<std::u16string>& GetASPParentTags();
    static bool ContainsChild(INibMLTag& tag, std::u16string_view name);
    void NoteChanged(THTMLTag& tag) override { FFixups.NoteChanged(tag); }

    // ---- Messages. Off the main thread they are dropped.

    void Error(std::string_view fileName, std::string_view message, std::string_view prefix, int32_t line,
               int32_t column);

    /// The event of a TDTDParser: its severity becomes the word before the message.
    void DTDParserError(TDTDParser* sender, TParseError kind, const std::string& message, int32_t line,
                        const std::string& fileName);

    // ---- Schema selection.

    const std::string& GetSchemaFile() const { return FSelection.GetSchemaFile(); }
    /// Makes the table from the schema that value names, unless it is the one in hand; what was
    /// parsed is forgotten then. Does nothing during a parse or a load.
    void SetSchemaFile(const std::string& value) { FRoad.SetSchemaFile(value); }
    /// Asked by the loader for each namespace of its names: the prefix that they get.
    std::string FollowNamespace(const std::string& nameSpace) {
        return FSelection.FollowNamespace(nameSpace);
    }
    /// An empty root for the table to be made.
    void MakeRoot(std::u16string_view name) { SetHiddenRootNode(MakeRef<THTMLTag>(name, this, -1)); }
    TKibitzMode GetKibitzMode() const { return FTable.GetMode(); }
    void SetKibitzMode(TKibitzMode mode) { FTable.SetMode(mode); }
    bool GetIsASPEnabled() const { return FSelection.GetIsASPEnabled(); }
    void SetIsASPEnabled(bool value) { FSelection.SetIsASPEnabled(value); }
    const std::string& GetFileName() const { return FFileName; }

    TAsciiCharList& GetCharList() { return FCharList; }

    // ---- The end of the package.

    /// Empties the tables and drops parser state and observers. The manager of a host that
    /// has kept it lives on with nothing to offer.
    void Retire();
    bool IsRetired() const { return FIsRetired; }

    // ---- Loading (DTDLoader.cpp, XSDLoader.cpp). root is the hidden root, or the tag
    // under which an output language or the global controls go.

    void LoadDTD(THTMLTag& root, const std::string& fileName);
    /// parents: names of the elements under which global elements stand; null for none.
    void LoadXSD(THTMLTag& root, const std::vector<std::u16string>* parents, const std::string& fileName);
    /// For free XML documents. A malformed file leaves as EXMLSchemaError (a std::runtime_error).
    void LoadXSDEx(THTMLTag& root, const std::vector<std::u16string>* parents, const std::string& fileName);

private:
    struct TKeptTable;
    void SwapTable(TKeptTable& kept);
    void ForgetTables();

    std::vector<TRef<INibMLTag>> FTagList;
    std::vector<TRef<INibMLTag>> FLooseTags;
    TElementTable FTable{*this};
    std::string FFileName;
    TNameMap<TTagAttributeBucket> FAttrEditors;  // by the attribute's id
    std::vector<TRef<INibMLTag>> FClosedTags;
    TAsciiCharList FCharList;
    TTagCase FTagCase = tcLowerCase;
    bool FIsRetired = false;
    TContextFixups FFixups;
    TSchemaSelection FSelection{*this};
    TDocumentRoad FRoad{*this};
    std::unique_ptr<TMLParser> FParser;
    std::deque<std::unique_ptr<TKeptTable>> FKept;  // the one put away last in front
};

/// The tags open at the caret of the last parse, and all registered tags; see MLCodeInsight.h.
CARETWELL_API TRef<ITagStackIterator> GetTagStackIterator(TMLSymbolManager& manager);
CARETWELL_API TRef<ISymbolManagerIterator> GetSymbolManagerIterator(TMLSymbolManager& manager);

}  // namespace caretwell
