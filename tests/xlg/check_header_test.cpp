// What is told of logs whose header is damaged.

#include "xlg/checked_log.h"

namespace tyxo::xlg {
namespace {

/// All values of engine and Evaluator are 0.
std::string with_zeros(std::string log) {
    for (const auto& [from, to] :
         std::vector<std::pair<const char*, const char*>>{{"<ENGINETYPE> 4", "<ENGINETYPE> 0"},
                                                          {"<CYLCONF> 4", "<CYLCONF> 0"},
                                                          {"<NUMZYL> 6", "<NUMZYL> 0"},
                                                          {"<ALARMLEVEL> 320", "<ALARMLEVEL> 0"},
                                                          {"<PREALARMLEVEL> 75", "<PREALARMLEVEL> 0"},
                                                          {"<OVERSPEED> 1650", "<OVERSPEED> 0"},
                                                          {"<RATEDSPEED> 1500", "<RATEDSPEED> 0"}})
        log = changed(log, from, to);
    return log;
}

TEST(XlgCheckHeader, DamagedHeaders) {
    const std::string header = a_header();
    const std::string log = six_cylinders();
    const std::string zeros = with_zeros(log);
    expect_told({
        {"an empty log", "", {"F: empty, it has no header"}},
        {"no header",
         log.substr(header.size()),
         {"F:1: no header, the log begins with this line (<REC1> 13:05:09 51 1480 1234 48 7 </REC1>)"}},
        {"two headers", header + log, {"F:107: a second header begins (<?xml version=\"1.0\"?>)"}},
        {"a header behind the records",
         log + header,
         {"F:114: a second header begins (<?xml version=\"1.0\"?>)"}},
        {"a header in the header",
         header.substr(0, 500) + "\r\n" + log,
         {"F:15: no line of a header (  )",
          "F:16: the header begins again in itself (<?xml version=\"1.0\"?>)"}},
        {"a header alone that is cut",
         header.substr(0, header.find("</INFO>")),
         {"F:8: no line of a header; it has no line end (    )",
          "F: the header ends in front of its </INFO>"}},
        {"a header that is cut, and records",
         header.substr(0, header.find("    <ENTRYTYPES>")) + first_record,
         {"F:52: the header ends in front of its <ENTRYTYPES> (<REC1> 13:05:09 51 1480 1234 48 7 </REC1>)"}},
        {"<LOG> is missing",
         golden_with("<LOG>\r\n", ""),
         {"F:106: the header ends in front of its <LOG> (<REC1> 13:05:09 51 1480 1234 48 7 </REC1>)"}},
        {"all values are 0",
         zeros,
         {"F:107: all values of engine and Evaluator are 0 in the header of this record (<REC1> 13:05:09 51 "
          "1480 1234 48 7 </REC1>)"}},
        {"a line is missing",
         golden_with("        <OVERSPEED> 1650 </OVERSPEED>\r\n", ""),
         {"F:47: the header has no OVERSPEED (        <RATEDSPEED> 1500 </RATEDSPEED>)"}},
        {"a line stands twice",
         golden_with("        <NUMZYL> 6 </NUMZYL>\r\n",
                     "        <NUMZYL> 6 </NUMZYL>\r\n        <NUMZYL> 6 </NUMZYL>\r\n"),
         {"F:30: NUMZYL stands twice or too late in the header (        <NUMZYL> 6 </NUMZYL>)"}},
        {"a line is cut",
         golden_with("<OVERSPEED> 1650 </OVERSPEED>", "<OVERSPEED> 16"),
         {"F:47: torn, cut in the header's OVERSPEED (        <OVERSPEED> 16)"}},
        {"a value is no number",
         golden_with("<NUMZYL> 6 </NUMZYL>", "<NUMZYL> six </NUMZYL>"),
         {"F:29: NUMZYL is wrong: six (        <NUMZYL> six </NUMZYL>)"}},
        {"a scale is no number",
         golden_with("<SCALE> .75<", "<SCALE> .7.5<"),
         {"F:72: SCALE of T4 is wrong:  .7.5 (            <SCALE> .7.5</SCALE>)"}},
        {"a date is none",
         golden_with("<LOGDATE> 20260702 ", "<LOGDATE> 20261302 "),
         {"F:7: LOGDATE is wrong: 20261302 (        <LOGDATE> 20261302 </LOGDATE>)"}},
        {"a foreign line",
         golden_with("    </INFO>", "    </INFOS>"),
         {"F:8: no line of a header (    </INFOS>)", "F:9: the header has no </INFO> (    <PARAMETER>)"}},
        {"a column is missing",
         golden_with("T6 T7 T8", "T6 T8"),
         {"F:101: no line of a header (        <REC1><LINEAR> T1 T2 T3 T6 T8 </LINEAR></REC1>)",
          "F:102: the header has no <REC1> (        <REC2><POLAR> T1 T4 T4 T4 T4 T4 T4 T4 T4 T4 T4 T4 "
          "T4...)"}},
        {"zeros in the header",
         golden_with("<TYPECODE> TX-6", std::string("<TYPECODE> T\0\0\0", 15)),
         {"F:26: 3 bytes are no text, the first one 0x00 at character 21 (        <TYPECODE> "
          "T\\x00\\x00\\x00 </TYPECODE>)"}},
    });
}

TEST(XlgCheckHeader, AChannelThatDidNotMeasureHasZerosAndNothingIsWrong) {
    const verdict found = checked(with_zeros(a_header()));
    EXPECT_TRUE(found.fine);
    EXPECT_EQ(found.told,
              text_lines{"F: remark: all values are 0 in the header, the channel did not measure"});
}

} // namespace
} // namespace tyxo::xlg
