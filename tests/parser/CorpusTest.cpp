// Real message files from public projects: each loads, or is refused at the
// line and with the text recorded here, and every identifier that the public
// headers give for a stored symbolic name matches the one the parser composed.
// A change of outcome fails the test; update the table only after checking
// the new outcome by hand against the format's rules.
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include "ParserTestSupport.h"

namespace {

struct Expectation {
    const char* file;
    int storedTexts;    // texts in the store after a successful load; -1: refused
    int refusedLine;    // line of the error when refused
    const char* error;  // the error text after its 'File: "...", Line: n - ' prefix
};

const Expectation EXPECTATIONS[] = {
    {"bind9__lib_win32_bindevt_bindevt.mc", -1, 16, "Cannot understand input: \"OutputBase = 16\""},
    {"chromafiler__src_message.mc", 13, 0, ""},
    {"classicsamples__Samples_NetworkAccessProtectionExtensions_cpp_SHA_DLL_Messages.mc", -1, 13,
     "Expected numeric value for message id, got: 1 Severity=Error "
     "SymbolicName=SDK_SAMPLE_SHA_WRONG_MSG_ID"},
    {"classicsamples__Samples_VolumeShadowCopyServiceProvider_cpp_eventlogmsgs.mc", -1, 4,
     "Expected numeric value for message id, got: 1      "
     "SymbolicName=SIMHWPRV_EVENTLOG_INFO_GENERIC_MESSAGE"},
    {"classicsamples__Samples_WebServices_FileRepService_cpp_FileRep.mc", -1, 21,
     "No symbolic name specified for message. Expected tag: \"symbolicname\""},
    {"classicsamples__Samples_Win7Samples_winbase_winnt_perftool_perfdlls_appmem_perfdll_MemCtrs."
     "mc",
     -1, 32, "Unknown language: English"},
    {"customwallpaper__CustomWallpaper_error_message.mc", 1, 0, ""},
    {"evtsys__messages.mc", 1, 0, ""},
    {"freebsd__ports_winnt_libntp_messages.mc", -1, 141, "Unknown language: English"},
    {"incalescent__error.mc", 4, 0, ""},
    {"libdcl__src_dcl_libdclbase_msgs.mc", 3, 0, ""},
    {"libsir__msvs_testbed_sir_winlog_provider.mc", -1, 33, "Unknown severity: Critical"},
    {"mariadb__sql_message.mc", -1, 13, "Unknown language: English"},
    {"nssm__messages.mc", -1, 1,
     "NUL byte in column 4: the file looks like UTF-16; message files are read as 8-bit text"},
    {"openam__opensso_products_webagents_agents_source_iis7_agent_ev.mc", -1, 15,
     "Expected numeric value for message id, got: 0x0   SymbolicName=MSG_INFO_1"},
    {"openelp__src_log_eventlog_messages.mc", 5, 0, ""},
    {"openvpn__src_openvpnserv_eventmsg.mc", 1, 0, ""},
    {"openxt__XenGuestAgent_xgamsg.fr.mc", 10, 0, ""},
    {"openxt__XenGuestAgent_xgamsg.ja.mc", -1, 1,
     "NUL byte in column 2: the file looks like UTF-16; message files are read as 8-bit text"},
    {"openxt__XenGuestAgent_xgamsg.mc", 10, 0, ""},
    {"poco__Foundation_src_pocomsg.mc", -1, 41, "Unknown language: English"},
    {"postgres__src_bin_pgevent_pgmsgevent.mc", -1, 3, "Unknown language: English"},
    {"pywin32__win32_src_PerfMon_PyPerfMsgs.mc", -1, 28, "Unknown language: English"},
    {"pywin32__win32_src_PythonServiceMessages.mc", -1, 44, "Unknown language: English"},
    {"pywin32__win32_src_win32evtlog_messages.mc", -1, 135, "Unknown language: English"},
    {"reactos__base_applications_cmdutils_eventcreate_evtmsgstr.mc", -1, 15,
     "No symbolic name specified for message. Expected tag: \"symbolicname\""},
    {"reactos__dll_win32_kernel32_winnls_lang_de-DE.mc", -1, 6654,
     "Unknown language: ERROR_INSTALL_LANGUAGE_UNSUPPORTED"},
    {"reactos__dll_win32_kernel32_winnls_lang_ru-RU.mc", -1, 6654,
     "Unknown language: ERROR_INSTALL_LANGUAGE_UNSUPPORTED"},
    {"reactos__modules_rosapps_applications_cmdutils_vfdcmd_vfdmsg.mc", -1, 1522,
     "Unexpected end of MessageId block"},
    {"reactos__modules_rostests_apitests_kernel32_FormatMessage.mc", 2, 0, ""},
    {"reactos__modules_rostests_win32_advapi32_eventlog_MyEventProvider.mc", 9, 0, ""},
    {"reactos__sdk_include_reactos_mc_bootmsg.mc", -1, 3, "Unknown language: English"},
    {"reactos__sdk_include_reactos_mc_bugcodes.mc", -1, 1545, "Unexpected end of MessageId block"},
    {"reactos__sdk_include_reactos_mc_errcodes.mc", -1, 14107,
     "Unknown language: ERROR_INSTALL_LANGUAGE_UNSUPPORTED"},
    {"reactos__sdk_include_reactos_mc_neteventmsg.mc", -1, 165,
     "Unexpected end of MessageId block"},
    {"reactos__sdk_include_reactos_mc_netmsgmsg.mc", -1, 8783,
     "Expected Name Value pair got: \"The specified computer name is incompatible with the default "
     "language used on the domain controller.\x0d"
     "\""},
    {"reactos__sdk_include_reactos_mc_ntiologc.mc", 39, 0, ""},
    {"reactos__sdk_include_reactos_mc_ntstatus.mc", -1, 3230,
     "Expected Name Value pair got: \"Indicates the specified resource language ID cannot be found "
     "in the\x0d"
     "\""},
    {"reactos__sdk_include_reactos_mc_pciclass.mc", -1, 3, "Unknown language: English"},
    {"reactos__sdk_include_reactos_mc_sacmsg.mc", -1, 3, "Unknown language: English"},
    {"redis__src_Win32_Interop_EventLog.mc", 4, 0, ""},
    {"smartmontools__src_os_win32_syslogevt.mc", -1, 22,
     "Cannot insert: 0, <name=\"Application\"; value=\"0x000\"> tuple into facilitynamesMap"},
    {"statemachine__DmoEffector_DmoEffector.mc", -1, 18,
     "Cannot insert: 16, <name=\"Application\"; value=\"0x10:FACILITY_APPLICATION_ERROR_CODE\"> "
     "tuple into facilitynamesMap"},
    {"wdksamples__network_trans_WFPSampler_svc_Framework_WFPSamplerService_Msg.mc", 2, 0, ""},
    {"wdksamples__serial_serial_serlog.mc", -1, 59,
     "Expected numeric value for message id, got: 0x0001 Facility=Serial Severity=Informational "
     "SymbolicName=SERIAL_KERNEL_DEBUGGER_ACTIVE"},
    {"wdksamples__setup_devcon_msg.mc", -1, 8,
     "Expected numeric value for message id, got: 60000 SymbolicName=MSG_USAGE"},
    {"wdksamples__smartcrd_pscr_pscrlog.mc", -1, 67,
     "Expected numeric value for message id, got: 0x0001 Facility=Smartcard Severity=Error "
     "SymbolicName=PSCR_NO_DEVICE_FOUND"},
    {"wine__dlls_mferror_mferror.mc", 74, 0, ""},
    {"wine__programs_fsutil_fsutil.mc", 1, 0, ""},
    {"xstudio__src_framework_ServerService.mc", 2, 0, ""},
};

const std::string CORPUS = TQMSG_CORPUS_DIR;

bool corpusPresent() { return !CORPUS.empty() && std::ifstream(CORPUS + "/MANIFEST.tsv").good(); }

// The first `columns` tab-separated fields of every data row of a corpus table.
std::vector<std::vector<std::string>> readTable(const std::string& name, std::size_t columns) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream in(CORPUS + "/" + name);
    std::string line, field;
    std::getline(in, line);  // header
    while (std::getline(in, line)) {
        std::vector<std::string> fields;
        std::istringstream split(line);
        while (fields.size() < columns && std::getline(split, field, '\t')) fields.push_back(field);
        if (fields.size() == columns) rows.push_back(fields);
    }
    return rows;
}

// The oracle identifiers of `file`, without the names the public headers disagree on.
std::map<std::string, uint32_t> oracleFor(const std::string& file) {
    std::map<std::string, uint32_t> oracle;
    for (auto& row : readTable("oracle_ids.tsv", 3)) {
        if (row[0] == file) oracle[row[1]] = static_cast<uint32_t>(std::stoul(row[2], nullptr, 16));
    }
    for (auto& row : readTable("oracle_conflicts.tsv", 2)) {
        if (row[0] == file) oracle.erase(row[1]);
    }
    return oracle;
}

class Corpus : public ::testing::TestWithParam<Expectation> {};

TEST_P(Corpus, LoadsAsRecordedWithTheOracleIdentifiers) {
    if (!corpusPresent()) GTEST_SKIP() << "no corpus of message files at '" << CORPUS << "'";
    const Expectation& expected = GetParam();
    const auto oracle = oracleFor(expected.file);
    inFreshProcess([&] {
        alarm(600);  // a hang ends the child and fails the test
        const std::string path = CORPUS + "/" + expected.file;
        std::string error = thrownBy([&] {
            EXPECT_EQ(thrownBy<MessageModuleException>([&] { MessageModule module(path, false); }),
                      "<no exception>");
        });
        bool loaded = error == "<no exception>";
        if (expected.storedTexts >= 0) {
            EXPECT_TRUE(loaded) << error;
            EXPECT_EQ(MessageModule::mlmap.msgmap.size(), std::size_t(expected.storedTexts));
        } else {
            EXPECT_EQ(error, at(path, expected.refusedLine) + expected.error);
        }
        for (const auto& entry : oracle) {
            // A refused file stops before some of its names; a loaded one has them all.
            long stored = idOf(entry.first);
            if (stored == -1 && !loaded) continue;
            EXPECT_EQ(uint32_t(stored), entry.second) << entry.first;
        }
    });
}

std::string testName(const ::testing::TestParamInfo<Expectation>& info) {
    std::string name = info.param.file;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(RealFiles, Corpus, ::testing::ValuesIn(EXPECTATIONS), testName);

TEST(CorpusManifest, EveryFileHasARecordedOutcome) {
    if (!corpusPresent()) GTEST_SKIP() << "no corpus of message files at '" << CORPUS << "'";
    std::set<std::string> recorded;
    for (const auto& expected : EXPECTATIONS) recorded.insert(expected.file);
    for (auto& row : readTable("MANIFEST.tsv", 1)) {
        EXPECT_EQ(recorded.count(row[0]), 1u) << row[0] << " has no recorded outcome";
    }
}

}  // namespace
