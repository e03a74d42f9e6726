// What the tests of the loaders share: a host with a message view, a folder for schema
// files, and the table that a load makes of them as text.
#pragma once

#include <gtest/gtest.h>

#include <optional>

#include "host/Platform.h"
#include "support/Split.h"
#include "support/TemporaryFolder.h"
#include "symbols/MLSymbolManager.h"
#include "symbols/SchemaReaderCache.h"
#include "tagmodel/AttributeEditors.h"

namespace caretwell {

/// A host that has a message view, settings and nothing else.
class TLoaderTestHost final : public TImplements<INibMessageServices, INibServices>, public ISettingsStore {
public:
    void ClearMessages() override {}
    void ShowMessageView() override {}
    void AddMessage(std::string_view fileName, std::string_view text, std::string_view prefix, int32_t line,
                    int32_t) override {
        std::string name(fileName.substr(fileName.rfind('/') + 1));
        FText +=
            std::string(prefix) + " " + name + ":" + std::to_string(line) + " " + std::string(text) + "\n";
    }
    std::string BaseRegistryKey() override { return "Base"; }
    std::string RootDirectory() override { return ""; }
    bool OpenKey(std::string_view key) override { return key == "Base\\Code Insight"; }
    std::optional<std::string> ReadString(std::string_view, std::string_view name) override {
        return name == FSetting ? std::optional<std::string>("True") : std::nullopt;
    }
    std::string FText;
    std::string FSetting;  ///< the one setting that is "True"
};

class TLoaderTest : public testing::Test {
protected:
    void SetUp() override {
        FHost = MakeRef<TLoaderTestHost>();
        FPlatform = MakePlatform({.SchemaFolder = FFolder, .Settings = FHost.Get()});
        SetPlatform(FPlatform.get());
        SetTarnwellIDEServices(FHost);
        auto editors = GetMLEditorRegistry();
        editors->RegisterEditorClass("uri", [] { return MakeRef<THTMLURIAttributeEditor>(); });
        editors->RegisterEditorClass("color", [] { return MakeRef<THTMLColorAttributeEditor>(); });
        editors->RegisterEditorClass("default", [] { return MakeRef<TDefaultAttributeEditor>(); });
    }
    void TearDown() override {
        FreeDTDReaders();
        FreeXSDReaders();
        ReleaseMLEditorRegistry();
        SetTarnwellIDEServices(nullptr);
        SetPlatform(nullptr);
    }

    std::string Write(const std::string& name, std::string_view text) { return FFiles.Write(name, text); }

    /// A table whose root is empty at first.
    struct TTable {
        TMLSymbolManager Manager;
        TTable() { Manager.SetHiddenRootNode(MakeRef<THTMLTag>(u"root", &Manager, -1)); }
        THTMLTag& Root() { return *Manager.GetHiddenRootNode(); }
        THTMLTag* Tag(std::string_view name) {
            if (name == "root") return Manager.GetHiddenRootNode();
            TTagBucket* bucket = Manager.FindBucket(ToUtf16(name));
            return bucket ? static_cast<THTMLTag*>(bucket->Tag.Get()) : nullptr;
        }
        /// Children by name, sorted.
        std::string Children(std::string_view name) {
            THTMLTag* tag = Tag(name);
            if (!tag) return "none";
            std::string text;
            tag->AlphaSort();
            for (const auto& child : tag->GetAllTags())
                text += (text.empty() ? "" : " ") + ToUtf8(child->GetName());
            return text;
        }
        /// "root: a b; a: c" for the tags asked for.
        std::string Show(std::string_view names) {
            std::string text;
            for (const auto& name : Split(names))
                text += (text.empty() ? "" : "; ") + name + ": " + Children(name);
            return text;
        }
        /// "name=value,value@editor", "!" after a required one, "on" before an event.
        std::string Attributes(std::string_view name) {
            std::string text;
            for (int32_t i = 0; i < Tag(name)->GetAttributeCount(); ++i)
                text += (i ? " " : "") + Show(name, *Tag(name)->GetAttribute(i));
            return text;
        }
        std::string Show(std::string_view tag, INibMLTagAttribute& attribute) {
            std::string text =
                Supports<INibMLTagAttributeEvent>(TRef<INibMLTagAttribute>(&attribute)) ? "on " : "";
            text += ToUtf8(attribute.GetName()) + "=";
            for (int32_t i = 0; i < attribute.GetCount(); ++i)
                text += (i ? "," : "") + ToUtf8(attribute.GetValue(i));
            TRef<INibMLTagAttribute> found;
            auto editor = Manager.GetAttributeEditorFromHashList(attribute.GetName(), found, ToUtf16(tag));
            if (editor) text += "@" + editor->GetEditorId();
            if (attribute.GetRequired()) text += "!";
            if (attribute.GetFixed()) text += "#" + ToUtf8(attribute.GetFixedValue());
            return text;
        }
    };

    TTemporaryFolder FFiles;
    std::string FFolder = FFiles.Path();  ///< of the schemas
    std::unique_ptr<IPlatform> FPlatform;
    TRef<TLoaderTestHost> FHost;
};

}  // namespace caretwell
