#include "pages/generatedPages.h"

#include "pages/completions.h"
#include "pages/manPage.h"
#include "system/inputStream.h"

namespace mordhost {

std::vector<GeneratedPage> GeneratedPages(const std::string& host) {
    return {
        {"mordhost.1", ManPage(InputStream(host + "/pages/mordhost.1.in").ReadAll())},
        {"completions/mordhost.bash", BashCompletion()},
        {"completions/_mordhost", ZshCompletion()},
        {"completions/mordhost.fish", FishCompletion()},
    };
}

} // namespace mordhost
