// Which schema the table follows: worked out before the scan from the kind of document, after
// it from what the doctype said. How the names of a schema are written follows the prefixes
// that a free XML document binds. On a document that stays on its schema both decisions are a
// comparison of names.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "markup/DocumentKind.h"
#include "parser/CaretState.h"

namespace caretwell {

class TMLSymbolManager;

class TSchemaSelection {
public:
    explicit TSchemaSelection(TMLSymbolManager& manager) : FManager(manager) {}

    /// File that the table was made from; empty if none was found.
    const std::string& GetSchemaFile() const { return FSchemaFile; }

    /// Before the scan of a document: a free XML document has its schema by its name.
    void Begin(const std::string& fileName);
    /// After it: follows what the document says of its schema. True if the table is new, so that
    /// what was scanned speaks of tags that are gone.
    bool Follow(const TCaretState& state);
    /// Makes the table from the schema that value names, unless that is the one already. True if
    /// it is new. For free XML documents value is the path of a file, for others what a doctype
    /// says, or nothing.
    bool Select(const std::string& value, std::string_view outputLanguage, bool isBeingTyped);
    const TDocumentKind& GetKind() const { return *FKind; }
    bool GetIsASPEnabled() const { return FIsASPEnabled; }
    void SetIsASPEnabled(bool value);
    /// The prefix that the names of a namespace get in the table being made.
    std::string FollowNamespace(const std::string& nameSpace);
    /// The table is empty.
    void Forget();

private:
    bool SelectFree(const std::string& path);
    bool FollowNamespaces(const TDocumentNamespaces& value);
    template <class TLoad>
    void MakeTable(const std::string& key, TLoad load);
    void LoadFree();
    void LoadFile(std::string_view outputLanguage);
    void LoadOutputLanguage(std::string_view output);
    void LoadServerControls();
    void ShowAllChildren();
    void ReportMissing(std::string_view format, const std::string& value);

    TMLSymbolManager& FManager;
    const TDocumentKind* FKind = &GetDocumentKind({});
    std::string FSchemaFile;
    std::string FXSLOutputFile;
    std::string FTableKey;  // of the table in hand; empty if it is not to be kept
    bool FIsASPEnabled = false;
    bool FASPChanged = false;
    TDocumentNamespaces FNamespaces;
    struct TTablePrefix {
        std::string Namespace, Prefix;
    };
    std::vector<TTablePrefix> FTablePrefixes;  // that the names in the table have
    std::set<std::string> FReported;           // what was said to be missing already
};

}  // namespace caretwell
