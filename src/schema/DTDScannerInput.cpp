// Where the scanner's text comes from: blocks of a file, included files, expansions.
#include <cstring>
#include <fstream>

#include "host/Paths.h"
#include "host/Platform.h"
#include "markup/MLParserUtils.h"
#include "schema/DTDParser.h"
#include "schema/DTDScanner.h"

namespace caretwell {
namespace {

constexpr std::string_view InvalidFile = "Invalid file %s";

}  // namespace

void TDTDScanner::LoadFromStream(std::istream& stream, std::string fileName) {
    Close();
    FStream = &stream;
    FFileName = std::move(fileName);
    FToken = tkEof;
    FReferencedText = 0;
    FIsStopped = false;
}

void TDTDScanner::Close() {
    FIncludes.clear();
    FExpansionBase = 0;
    DropFinishedExpansions(EntityEnd());
    FInEntity = false;
    FEntityNames.reset();
    FOwnStream.reset();
    FStream = nullptr;
    Stop();
}

void TDTDScanner::StartFile() {
    FLine = 1;
    FAtEOF = false;
    FillBuffer();
    if (Follows("\xEF\xBB\xBF")) FPosition += 3;
}

void TDTDScanner::FillBuffer() {
    FPosition = FBuffer.data();
    FBufferLength = static_cast<int32_t>(FStream->rdbuf()->sgetn(FBuffer.data(), BlockSize));
    if (FBufferLength < BlockSize) FAtEOF = true;
    else GiveBackCutLine();
    FBuffer[static_cast<size_t>(FBufferLength)] = 0;
    if (!FIncludes.empty() && !Spend(static_cast<size_t>(FBufferLength))) FBuffer[0] = 0;
}

/// Index after the last line break before end; 0 if there is none.
int32_t TDTDScanner::FindLastBreak(int32_t end) const {
    while (end > 0 && !IsLineBreak(FBuffer[static_cast<size_t>(end - 1)])) --end;
    return end;
}

void TDTDScanner::GiveBackCutLine() {
    int32_t end = FindLastBreak(BlockSize);
    if (end == 0) throw EDTDParserError("Line too long");
    // CR LF must not be counted once in each of two blocks.
    if (end == BlockSize && FBuffer[BlockSize - 1] == '\r' && FStream->rdbuf()->sgetc() == '\n')
        FBuffer[static_cast<size_t>(FBufferLength++)] = static_cast<char>(FStream->rdbuf()->sbumpc());
    if (end == BlockSize) return;
    auto moved = FStream->rdbuf()->pubseekoff(end - BlockSize, std::ios::cur, std::ios::in);
    if (moved == std::streampos(-1)) throw EDTDParserError("Stream cannot be moved back");
    FBufferLength = end;
}

bool TDTDScanner::EndOfStream() {
    if (FIsStopped) return true;
    if (FInEntity) {
        EndExpansion();
        return false;
    }
    if (FPosition < FBuffer.data() + FBufferLength) {  // a zero byte of the file itself
        ReportInvalid(0);
        ++FPosition;
        return false;
    }
    if (FAtEOF && FIncludes.empty()) return true;
    if (FAtEOF) PopBlock();
    else FillBuffer();
    return false;
}

bool TDTDScanner::Spend(size_t bytes) {
    FReferencedText += static_cast<int64_t>(bytes);
    if (FReferencedText <= MaxReferencedText) return true;
    if (!FIsStopped) ParseError(peFailure, "Too much text in entities", {});
    Stop();
    return false;
}

// ----------------------------------------------------------------- included files

// A module lies beside the file that names it, or further in, whatever address it has in the
// world; or in the schema folder, where a strange identifier means no standard.
std::string TDTDScanner::FindIncludeFile(const std::string& name) const {
    std::string folder = NormalPath(GetPlatform().SchemaFolder());
    for (const std::string& location : {name, std::string(FileNameOf(name))}) {
        std::string beside = NormalPath(FolderOf(FFileName) + location);
        if (IsInFolder(beside, folder) && GetPlatform().FileExists(beside)) return beside;
    }
    std::string path = GetSchemaFileName(name, kmXML);
    return path.starts_with(GetPlatform().SchemaFolder()) ? path : name;
}

void TDTDScanner::PushIncludeFile(std::string_view name) {
    if (name.empty()) return ParseError(peFailure, InvalidFile, {name});
    std::string path = FindIncludeFile(std::string(name));
    if (path == name || !GetPlatform().FileExists(path)) return ParseError(peFailure, InvalidFile, {path});
    if (IsOpen(path)) return ParseError(peFailure, "File %s includes itself", {path});
    auto stream = std::make_unique<std::ifstream>(path, std::ios::binary);
    if (!stream->is_open()) return ParseError(peFailure, InvalidFile, {path});
    if (!Spend(sizeof(TBufferEntry))) return;
    PushBlock();
    FFileName = std::move(path);
    FOwnStream = std::move(stream);
    FStream = FOwnStream.get();
    StartFile();
}

bool TDTDScanner::IsOpen(const std::string& path) const {
    if (FFileName == path) return true;
    for (const auto& entry : FIncludes)
        if (entry->FFileName == path) return true;
    return false;
}

void TDTDScanner::PushBlock() {
    auto entry = std::make_unique<TBufferEntry>();
    entry->FLine = FLine;
    entry->FFileName = std::move(FFileName);
    entry->FStream = FStream;
    entry->FOwnStream = std::move(FOwnStream);
    entry->FPosition = FPosition;
    entry->FBufferLength = FBufferLength;
    entry->FBuffer = FBuffer;
    entry->FInEntity = FInEntity;
    if (FInEntity) entry->FExpansionRest.assign(FPosition, EntityEnd());
    entry->FSavedPosition = FSavedPosition;
    entry->FEntityNames = std::move(FEntityNames);
    entry->FExpansionBase = FExpansionBase;
    FInEntity = false;
    FEntityNames.reset();
    FExpansionBase = FExpansions.size();
    FIncludes.push_back(std::move(entry));
}

void TDTDScanner::PopBlock() {
    TBufferEntry& entry = *FIncludes.back();
    FLine = entry.FLine;
    FFileName = std::move(entry.FFileName);
    FStream = entry.FStream;
    FOwnStream = std::move(entry.FOwnStream);
    FPosition = entry.FPosition;
    FBufferLength = entry.FBufferLength;
    FBuffer = entry.FBuffer;
    FBuffer[static_cast<size_t>(FBufferLength)] = 0;
    FInEntity = entry.FInEntity;
    if (FInEntity) PutExpansion(entry.FExpansionRest, 0);
    FSavedPosition = entry.FSavedPosition;
    FEntityNames = std::move(entry.FEntityNames);
    FExpansionBase = entry.FExpansionBase;
    FAtEOF = false;
    FIncludes.pop_back();
}

// --------------------------------------------------------------------- expansions

void TDTDScanner::PushParameterizedEntity(TDTDParameterizedEntity& entity) {
    if (entity.FValue.empty()) return;
    bool isNested = FInEntity;
    if (isNested) DropFinishedExpansions(FTokenStart);
    if (entity.FIsExpanding)
        return ParseError(peFailure, "Parameterized entity %s expands into itself", {entity.FName});
    size_t rest = isNested ? static_cast<size_t>(EntityEnd() - FPosition) : 0;
    size_t limit = isNested ? BlockSize - rest : BlockSize - 1;
    if (entity.FValue.size() > limit) return ParseError(peFailure, "Parameterized entity too long", {});
    if (!Spend(entity.FValue.size() + sizeof(TExpansion) + sizeof(std::string_view))) return;
    if (!isNested) FSavedPosition = FPosition;
    PutExpansion(entity.FValue, rest);
    FExpansions.push_back({&entity, FPosition + entity.FValue.size()});
    entity.FIsExpanding = true;
    if (!FEntityNames) FEntityNames = std::make_shared<TDTDNameList>();
    FEntityNames->push_back(entity.FName);
}

void TDTDScanner::PutExpansion(std::string_view text, size_t rest) {
    FEntityLength = static_cast<int32_t>(text.size() + rest);
    char* begin = FEntityBuffer.data() + BlockSize - FEntityLength;
    std::memcpy(begin, text.data(), text.size());
    FPosition = begin;
    FInEntity = true;
}

/// An expansion whose text ended before the position may be entered again.
void TDTDScanner::DropFinishedExpansions(const char* position) {
    while (FExpansions.size() > FExpansionBase && FExpansions.back().End <= position) {
        FExpansions.back().Entity->FIsExpanding = false;
        FExpansions.pop_back();
    }
}

void TDTDScanner::EndExpansion() {
    DropFinishedExpansions(EntityEnd());
    FPosition = FSavedPosition;
    FInEntity = false;
    ClearEntityNames();
}

void TDTDScanner::ClearEntityNames() {
    // Elements may hold the list; then it is theirs.
    if (FEntityNames && FEntityNames.use_count() == 1) FEntityNames->clear();
    else FEntityNames.reset();
}

TDTDEntityNames TDTDScanner::GetParameterizedEntityNames() const {
    if (!FEntityNames || FEntityNames->empty()) return {};
    return {FEntityNames, FEntityNames->size()};
}

}  // namespace caretwell
