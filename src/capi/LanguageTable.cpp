// The one table of language codes: POSIX and PO codes ("de", "pt_BR") and the
// Windows language identifiers they stand for (0x407, 0x416).
#include "capi/LanguageTable.h"

#include <cstring>

namespace {

struct CodeAndId {
    const char* code;
    long id;
};

// For each identifier the preferred code comes first: it is the one written
// into PO headers. A bare code maps to the region Windows picks for it.
const CodeAndId LANGUAGES[] = {
    {"ar", 0x401},    {"ar_SA", 0x401},  {"ar_EG", 0xC01}, {"bg", 0x402},    {"bg_BG", 0x402},
    {"ca", 0x403},    {"ca_ES", 0x403},  {"zh_TW", 0x404}, {"zh_CN", 0x804}, {"zh", 0x804},
    {"zh_HK", 0xC04}, {"zh_SG", 0x1004}, {"cs", 0x405},    {"cs_CZ", 0x405}, {"da", 0x406},
    {"da_DK", 0x406}, {"de", 0x407},     {"de_DE", 0x407}, {"de_CH", 0x807}, {"de_AT", 0xC07},
    {"el", 0x408},    {"el_GR", 0x408},  {"en", 0x409},    {"en_US", 0x409}, {"en_GB", 0x809},
    {"en_AU", 0xC09}, {"en_CA", 0x1009}, {"es", 0xC0A},    {"es_ES", 0xC0A}, {"es_MX", 0x80A},
    {"fi", 0x40B},    {"fi_FI", 0x40B},  {"fr", 0x40C},    {"fr_FR", 0x40C}, {"fr_BE", 0x80C},
    {"fr_CA", 0xC0C}, {"fr_CH", 0x100C}, {"he", 0x40D},    {"he_IL", 0x40D}, {"hu", 0x40E},
    {"hu_HU", 0x40E}, {"is", 0x40F},     {"is_IS", 0x40F}, {"it", 0x410},    {"it_IT", 0x410},
    {"it_CH", 0x810}, {"ja", 0x411},     {"ja_JP", 0x411}, {"ko", 0x412},    {"ko_KR", 0x412},
    {"nl", 0x413},    {"nl_NL", 0x413},  {"nl_BE", 0x813}, {"nb", 0x414},    {"nb_NO", 0x414},
    {"no", 0x414},    {"nn", 0x814},     {"nn_NO", 0x814}, {"pl", 0x415},    {"pl_PL", 0x415},
    {"pt_BR", 0x416}, {"pt", 0x416},     {"pt_PT", 0x816}, {"ro", 0x418},    {"ro_RO", 0x418},
    {"ru", 0x419},    {"ru_RU", 0x419},  {"hr", 0x41A},    {"hr_HR", 0x41A}, {"sk", 0x41B},
    {"sk_SK", 0x41B}, {"sq", 0x41C},     {"sq_AL", 0x41C}, {"sv", 0x41D},    {"sv_SE", 0x41D},
    {"th", 0x41E},    {"th_TH", 0x41E},  {"tr", 0x41F},    {"tr_TR", 0x41F}, {"id", 0x421},
    {"id_ID", 0x421}, {"uk", 0x422},     {"uk_UA", 0x422}, {"be", 0x423},    {"be_BY", 0x423},
    {"sl", 0x424},    {"sl_SI", 0x424},  {"et", 0x425},    {"et_EE", 0x425}, {"lv", 0x426},
    {"lv_LV", 0x426}, {"lt", 0x427},     {"lt_LT", 0x427}, {"fa", 0x429},    {"fa_IR", 0x429},
    {"vi", 0x42A},    {"vi_VN", 0x42A},  {"eu", 0x42D},    {"eu_ES", 0x42D}, {"hi", 0x439},
    {"hi_IN", 0x439}, {"ms", 0x43E},     {"ms_MY", 0x43E}, {"kk", 0x43F},    {"kk_KZ", 0x43F},
};

}  // namespace

long languageOfCode(const char* code, std::size_t length) {
    for (const CodeAndId& entry : LANGUAGES) {
        if (std::strlen(entry.code) == length && std::memcmp(entry.code, code, length) == 0) {
            return entry.id;
        }
    }
    return -1;
}

const char* codeOfLanguage(long languageId) {
    for (const CodeAndId& entry : LANGUAGES) {
        if (entry.id == languageId) return entry.code;
    }
    return nullptr;
}
