/* Languages from locale names and the environment, and codes of languages. */
#define _POSIX_C_SOURCE 200809L
#include <stdlib.h>

#include "capi-support.h"

static void locale_names(void) {
    static const struct {
        const char* locale;
        long expected;
    } rows[] = {
        {"de_DE.UTF-8", 0x407},
        {"de", 0x407},
        {"de_AT", 0xC07},
        {"fr_CA", 0xC0C},
        {"pt_BR", 0x416},
        {"pt_PT", 0x816},
        {"zh_CN", 0x804},
        {"zh_TW", 0x404},
        {"en_GB", 0x809},
        {"C", 0x409},
        {"POSIX", 0x409},
        {"C.UTF-8", 0x409},
        {"de_DE@euro", 0x407},
        {"pt-BR", 0x416},
        {"en_US.ISO-8859-1", 0x409},
        {"de_LU", 0x407}, /* a region the table lacks: the bare language */
        {"", -1},
        {"xx", -1},
        {"xx_DE", -1},
        {"_DE", -1},
        {"Cx", -1},
        {".UTF-8", -1},
    };
    size_t i;
    for (i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
        long id = tqmsg_language_from_locale(rows[i].locale);
        CHECK(id == rows[i].expected, "\"%s\": 0x%lx, expected 0x%lx", rows[i].locale, id,
              rows[i].expected);
    }
}

static void set_or_unset(const char* variable, const char* value) {
    if (value != NULL) {
        setenv(variable, value, 1);
    } else {
        unsetenv(variable);
    }
}

/* NULL asks LC_ALL, then LC_MESSAGES, then LANG; an empty value counts as unset. */
static void environment_order(void) {
    static const struct {
        const char *lc_all, *lc_messages, *lang;
        long expected;
    } rows[] = {
        {"de_DE.UTF-8", "fr_FR", "it_IT", 0x407},
        {NULL, "fr_FR", "it_IT", 0x40C},
        {"", "fr_FR", "it_IT", 0x40C},
        {NULL, NULL, "it_IT", 0x410},
        {"", "", "pt_BR", 0x416},
        {NULL, NULL, NULL, 0x409}, /* nothing set: the C locale */
        {NULL, NULL, "xx", -1},
        {"xx", "de", "de", -1}, /* the first one set decides, known or not */
    };
    size_t i;
    for (i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
        long id;
        set_or_unset("LC_ALL", rows[i].lc_all);
        set_or_unset("LC_MESSAGES", rows[i].lc_messages);
        set_or_unset("LANG", rows[i].lang);
        id = tqmsg_language_from_locale(NULL);
        CHECK(id == rows[i].expected, "row %zu: 0x%lx, expected 0x%lx", i, id, rows[i].expected);
    }
}

static void language_codes(void) {
    static const struct {
        long id;
        const char* code;
    } rows[] = {
        {0x407, "de"}, {0x416, "pt_BR"}, {0x816, "pt_PT"}, {0x804, "zh_CN"},
        {0x409, "en"}, {0xC07, "de_AT"}, {0x1234, NULL},   {-1, NULL},
    };
    size_t i;
    for (i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
        const char* code = tqmsg_language_code(rows[i].id);
        CHECK_TEXT(code, rows[i].code, "language code");
        /* Every code leads back to its language. */
        if (code != NULL) {
            CHECK(tqmsg_language_from_locale(code) == rows[i].id, "back from \"%s\"", code);
        }
    }
}

int main(int argc, char** argv) {
    static const struct scenario scenarios[] = {
        {"locale_names", locale_names},
        {"environment_order", environment_order},
        {"language_codes", language_codes},
    };
    return run_scenarios(argc, argv, scenarios, sizeof scenarios / sizeof scenarios[0]);
}
