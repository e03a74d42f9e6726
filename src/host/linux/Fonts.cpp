#include "host/linux/Fonts.h"

#ifdef CARETWELL_HAS_FONTCONFIG
#include <fontconfig/fontconfig.h>

#include <set>
#endif

namespace caretwell {

std::vector<std::string> ListFontFamilies() {
    std::vector<std::string> families;
#ifdef CARETWELL_HAS_FONTCONFIG
    FcConfig* config = FcInitLoadConfigAndFonts();
    if (!config) return families;
    FcPattern* any = FcPatternCreate();
    FcObjectSet* wanted = FcObjectSetBuild(FC_FAMILY, nullptr);
    FcFontSet* fonts = FcFontList(config, any, wanted);
    std::set<std::string> names;
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        FcChar8* family = nullptr;
        if (FcPatternGetString(fonts->fonts[i], FC_FAMILY, 0, &family) == FcResultMatch)
            names.insert(reinterpret_cast<const char*>(family));
    }
    if (fonts) FcFontSetDestroy(fonts);
    FcObjectSetDestroy(wanted);
    FcPatternDestroy(any);
    FcConfigDestroy(config);
    families.assign(names.begin(), names.end());
#endif
    return families;
}

}  // namespace caretwell
