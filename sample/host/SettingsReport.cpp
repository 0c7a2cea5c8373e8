#include "SettingsReport.h"
#include "TraceLog.h"
#include <afx.h>
#include "settings/TvkProduct.h"
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace
{
constexpr char Arrow[] = "---->";

enum class Kind
{
    Text,
    Number
};

struct Question
{
    const char* key;
    Kind kind;
    const char* lookedUpAs; ///< the keys one of which a look-up puts in place of this one, separated by blanks, or null
    bool morvayEdition;     ///< asked as the store's edition of the printer does: its few settings over the series'
};

constexpr Question Questions[] = {
    {"IDO_MODEL", Kind::Text, nullptr, false},
    {"IDO_URL_PRINTER_CODE", Kind::Text, nullptr, false},
    {"IDO_INKSTYLE", Kind::Number, nullptr, false},
    {"IDO_ORDERSUPPLIES_EXECUTABLENAME_ARGUMENTS", Kind::Text, nullptr, false},
    {"IDO_OEM_INKJET_IDENT", Kind::Text, nullptr, false},
    {"IDO_SUPPLIES_SUBURL", Kind::Text, nullptr, false},
    {"IDO_DEFAULT_SOUND", Kind::Number, nullptr, false},
    {"IDO_RZB_EXECUTABLENAME_PATH", Kind::Text,
     "IDO_RZB_EXECUTABLENAME_9X_PATH IDO_RZB_EXECUTABLENAME_NT_PATH IDO_RZB_EXECUTABLENAME_WIN2000_PATH", false},
    {"IDO_RZB_TECHNICALCONTACT_HELPFILE", Kind::Text,
     "IDO_RZB_TECHNICALCONTACT_HELPFILE9X IDO_RZB_TECHNICALCONTACT_HELPFILENT", false},
    {"IDO_DEBUGMSG", Kind::Number, "IDO_FEATURE_ON IDO_FEATURE_OFF", false},
    {"IDO_DEFAULT_COLORCART", Kind::Text, "R", false}, // the character of identity 52, which the preload file names
    {"IDO_DEFAULT_BLACKCART", Kind::Text, "2", false},
    {"IDO_DEFAULT_SOUND", Kind::Number, nullptr, true},
    {"IDO_SUPPORT_SUBURL", Kind::Text, nullptr, true},
    {"IDO_NOT_A_SETTING", Kind::Text, nullptr, false},
};

std::string Ask(TvkProduct& product, const char* key, Kind kind)
{
    if (kind == Kind::Number)
    {
        unsigned long number = 0;
        return std::to_string(product.GetSetting(key, number));
    }
    CString text;
    return static_cast<LPCSTR>(product.GetSetting(key, text));
}

/// The source that the newest record about `key` names, or nothing.
std::string SourceOf(const std::vector<std::string>& records, const std::string& key)
{
    const std::string middle = Arrow + key + Arrow;
    for (auto record = records.rbegin(); record != records.rend(); ++record)
    {
        const std::string body = RecordBody(*record);
        const size_t end = body.find(middle);
        const size_t begin = body.find(')') + 1; // behind the "(char)" tag
        if (end != std::string::npos && begin <= end)
            return body.substr(begin, end - begin);
    }
    return {};
}

std::string InPlainWords(const std::string& source, bool morvayEdition)
{
    const std::string series = static_cast<LPCSTR>(TvkProduct::GetProductPrefix() + "jswr.dll");
    if (source == "CFG DLL")
        return "configuration library";
    if (source == series && morvayEdition)
        return "fallback library " + source;
    return "settings library " + source;
}

/// Which of the keys that can stand in for the question's has its value.
std::string StandIn(TvkProduct& product, const Question& question, const std::string& value)
{
    const std::string candidates = question.lookedUpAs;
    for (size_t begin = 0; begin < candidates.size();)
    {
        const size_t end = std::min(candidates.find(' ', begin), candidates.size());
        const std::string candidate = candidates.substr(begin, end - begin);
        if (Ask(product, candidate.c_str(), question.kind) == value)
            return candidate;
        begin = end + 1;
    }
    return {};
}
} // namespace

bool ReportSettings(TraceLog& trace)
{
    TvkProduct series;
    TvkProduct morvay(TvkProduct::GetProductPrefix() + "mrvy.dll");
    bool complete = true;
    std::printf("%-44s%-40s%s\n", "SETTING", "VALUE", "WHERE IT CAME FROM");
    for (const Question& question : Questions)
    {
        TvkProduct& product = question.morvayEdition ? morvay : series;
        trace.NewRecords();
        const std::string value = Ask(product, question.key, question.kind);
        const std::string source = SourceOf(trace.NewRecords(), question.key);
        complete = complete && !source.empty();
        std::string place = InPlainWords(source, question.morvayEdition);
        if (value == "ERROR")
            place = "nowhere: asked last was " + source;
        if (question.lookedUpAs)
        {
            const std::string standIn = StandIn(product, question, value);
            place += standIn.size() == 1 ? ", as cartridge '" + standIn + "' (preload)" : ", as " + standIn;
        }
        const std::string name = std::string(question.key) + (question.morvayEdition ? " (Morvay edition)" : "");
        std::printf("%-44s%-40s%s\n", name.c_str(), ("\"" + value + "\"").c_str(), place.c_str());
    }
    return complete;
}
