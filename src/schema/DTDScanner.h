// The text of a document type definition as tokens. The scanner deals itself with
// everything that changes where the input comes from: blocks of a file, included
// files, and parameter entities expanded in place.
//
//     <!ENTITY % heading "h1|h2">
//     <!ELEMENT (%heading;) - - (#PCDATA)>
//         tkElement "(" h1 "|" h2 ")" "-" "-" "(" "#" PCDATA ")" ">"
//
// It reads SGML and XML definitions alike, so it accepts a little more than either.
// One extension is its own: a comment that begins with the word ATTRIBUTEEDITORS names
// the editors of attributes' values, as in <!--ATTRIBUTEEDITORS body.bgcolor=color -->. In the
// same manner CONTENTRULES says of content models what a DTD has no words for.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <initializer_list>
#include <istream>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "schema/DTDSymbols.h"

namespace caretwell {

class TDTDParser;

enum TTokenKind : uint8_t {
    tkEof,
    tkElement,
    tkAttList,
    tkEntity,
    tkNumber,
    tkIdentifier,
    tkLessThan,
    tkConditionalSectionStart,
    tkConditionalSectionEnd,
    tkGreaterThan,
    tkBang,
    tkDot,
    tkFSlash,
    tkPlus,
    tkPound,
    tkMinus,
    tkQuestionMark,
    tkAsterisk,
    tkLogicalOr,
    tkLogicalAnd,
    tkRParenPlus,
    tkComma,
    tkLBracket,
    tkRBracket,
    tkStringLiteral,
    tkLParen,
    tkRParen,
    tkPercent,
    tkSemiColon,
};

/// Ends a load: a line that fits into no block, or a file that cannot be read.
class EDTDParserError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A word that begins a declaration, such as "<!ELEMENT".
struct TDTDKeywordSymbol : TDTDSymbol {
    TDTDKeywordSymbol(std::string_view name, TTokenKind token) : TDTDSymbol(name), FTokenKind(token) {}
    TTokenKind FTokenKind;
};

/// Broken input is reported through the parser, and the scan goes on after it.
class TDTDScanner {
public:
    static constexpr int32_t BlockSize = 16384;
    /// Text that references may bring in during one load, in bytes. Entities that name
    /// each other twice, level upon level, and files that include each other so, grow
    /// by powers of two; the largest definitions in use stay below a tenth of this.
    static constexpr int64_t MaxReferencedText = int64_t{32} << 20;

    explicit TDTDScanner(TDTDParser& parser);
    TDTDScanner(const TDTDScanner&) = delete;
    TDTDScanner& operator=(const TDTDScanner&) = delete;

    /// Takes the stream, which is not owned and must allow to move back.
    void LoadFromStream(std::istream& stream, std::string fileName);
    /// Lets go of the streams. FFileName and FLine stay, to tell where a load ended.
    void Close();
    /// Line 1 and the first block of the current file; a byte order mark is skipped.
    void StartFile();
    /// Reads a block, cut at a line break. Throws EDTDParserError if it holds none.
    void FillBuffer();
    /// Moves to the next token; the result stands in FToken and FTokenText.
    void GetToken();
    /// Called at each zero byte; true only at the real end of the input.
    bool EndOfStream();
    /// Reads on in a file of the schema folder; one that lies elsewhere is never opened.
    void PushIncludeFile(std::string_view name);
    /// Reads on in the entity's value. A reference inside an expansion goes before what
    /// is left of it.
    void PushParameterizedEntity(TDTDParameterizedEntity& entity);
    /// Skips a conditional section, from a place inside it up to its end or the end of
    /// the input, which is then the current token.
    void Ignore();
    void BeginIgnore() { ++FIgnoreDepth; }
    void EndIgnore() {
        if (FIgnoreDepth >= 0) --FIgnoreDepth;
    }
    /// From now on there is nothing but tkEof.
    void Stop() { FIsStopped = true; }

    /// Entities expanded since the position last left the file's block.
    TDTDEntityNames GetParameterizedEntityNames() const;
    void ParseError(TParseError severity, std::string_view format,
                    std::initializer_list<std::string_view> arguments) const;

    /// The name must live as long as the scanner.
    void EnterKeywordSymbol(std::string_view name, TTokenKind kind);
    /// Without regard to case; tkIdentifier if it is no keyword.
    TTokenKind LookupKeywordSymbol(std::string_view name) const;
    void ClearKeywordTable();

    TTokenKind FToken = tkEof;
    std::string FTokenText;  ///< a string's without its quotes
    std::string FFileName;   ///< current file, for messages
    int32_t FLine = 1;       ///< current line of the current file

private:
    /// An expansion in the buffer: it lasts until the position reaches its end.
    struct TExpansion {
        TDTDParameterizedEntity* Entity;
        const char* End;
    };
    /// The saved state of an including file.
    // The line feed of a CR LF and a zero byte may come after a block.
    using TBlock = std::array<char, BlockSize + 2>;
    struct TBufferEntry {
        int32_t FLine = 0;
        std::string FFileName;
        std::istream* FStream = nullptr;
        std::unique_ptr<std::istream> FOwnStream;
        const char* FPosition = nullptr;
        int32_t FBufferLength = 0;
        TBlock FBuffer;
        // A file may be included from within an expansion, and expand entities itself.
        bool FInEntity = false;
        std::string FExpansionRest;
        const char* FSavedPosition = nullptr;
        std::shared_ptr<TDTDNameList> FEntityNames;
        size_t FExpansionBase = 0;
    };

    // Tokens. The readers give false if what they read is no token: start over.
    bool ReadToken();
    bool Take(TTokenKind kind, const char* end);
    bool ReadEnd();
    bool ReadMinus();
    bool ReadRParen();
    bool ReadRBracket();
    bool ReadNumber();
    bool ReadIdentifier();
    bool ReadLessThan();
    bool ReadMarkedComment();
    bool ReadPercent();
    bool ReadInvalid();
    bool HandleString(char quote);
    bool SkipInstruction();
    void HandleGlobalComment();
    void HandleInlineComment();
    using TEntryReader = void (TDTDScanner::*)(std::string_view);
    void HandleEntries(TEntryReader read);
    template <class TTest>
    bool SkipTo(TTest isEnd);
    void SetEditor(std::string_view entry);
    void AddContentRule(std::string_view entry);
    TDTDParameterizedEntity* FindEntity(std::string_view name) const;
    void SkipWhiteSpace();
    void SkipLineBreak();
    bool Follows(std::string_view text) const;
    void ReportInvalid(char c) const;
    void ReportCut(std::string_view expected) const;

    // Input.
    const char* EntityEnd() const { return FEntityBuffer.data() + BlockSize; }
    void PutExpansion(std::string_view text, size_t rest);
    void DropFinishedExpansions(const char* position);
    void EndExpansion();
    void ClearEntityNames();
    std::string FindIncludeFile(const std::string& name) const;
    bool IsOpen(const std::string& path) const;
    void PushBlock();
    void PopBlock();
    int32_t FindLastBreak(int32_t end) const;
    void GiveBackCutLine();
    bool Spend(size_t bytes);

    TDTDParser& FParser;
    std::istream* FStream = nullptr;
    std::unique_ptr<std::istream> FOwnStream;  ///< the stream, if it is an include's
    bool FAtEOF = false;
    const char* FPosition = nullptr;
    const char* FTokenStart = nullptr;
    int32_t FBufferLength = 0;
    TBlock FBuffer{};
    std::vector<std::unique_ptr<TBufferEntry>> FIncludes;

    // The text of an expansion stands at the end of its buffer, so that a nested
    // reference is put before what is left without moving it.
    std::array<char, BlockSize + 1> FEntityBuffer{};
    int32_t FEntityLength = 0;
    const char* FSavedPosition = nullptr;
    bool FInEntity = false;  ///< the position is in that buffer
    std::shared_ptr<TDTDNameList> FEntityNames;
    std::vector<TExpansion> FExpansions;
    size_t FExpansionBase = 0;  ///< those below belong to including files

    int32_t FIgnoreDepth = 0;
    int64_t FReferencedText = 0;
    bool FIsStopped = false;
    std::deque<TDTDKeywordSymbol> FKeywords;  // a handful
};

}  // namespace caretwell
