#include "links/CDataRetriever.h"
#include "diag/CSpy.h"
#include "links/ParticipationLibrary.h"
#include "settings/TvkProduct.h"
#include "system/internal/Handle.h"

namespace
{
/// What hosts are told when the user has not decided.
constexpr int Undecided = 9;
} // namespace

CDataRetriever::CDataRetriever() : m_hDataRetriever(nullptr), m_bLoaded(FALSE) {}

CDataRetriever::~CDataRetriever()
{
    FreeDataRetrieverDLL();
}

int CDataRetriever::GetParticipationLevel()
{
    int level = 0;
    LoadDataRetrieverDLL();
    if (const auto query = tvk::FindEntry<QueryParticipationLevelFunction>(m_hDataRetriever, "QueryParticipationLevel"))
    {
        const int answer = query();
        level = answer == PARTICIPATION_TAKES_PART || answer == PARTICIPATION_DECLINED ? answer : Undecided;
    }
    FreeDataRetrieverDLL();
    CString trace;
    trace.Format("CDataRetriever::GetParticipationLevel()...level = %d", level);
    CSpy().OutputData(trace);
    return level;
}

int CDataRetriever::SetParticipationLevel(int level)
{
    LoadDataRetrieverDLL();
    int result = m_bLoaded; // a library without the entry has nothing to remember: that is no failure
    if (const auto set = tvk::FindEntry<SetParticipationLevelFunction>(m_hDataRetriever, "SetParticipationLevel"))
        result = set(level == 1 ? PARTICIPATION_TAKES_PART : PARTICIPATION_DECLINED) == 1;
    FreeDataRetrieverDLL();
    return result;
}

CString CDataRetriever::GetDataRetrieverFilename()
{
    CString fileName;
    return TvkProduct().GetSetting("IDO_DATARETRIEVER_FILENAME", fileName);
}

void CDataRetriever::LoadDataRetrieverDLL()
{
    if (m_bLoaded)
        return;
    const CString fileName = GetDataRetrieverFilename();
    m_hDataRetriever = fileName.IsEmpty() ? nullptr : LoadLibraryA(fileName);
    m_bLoaded = m_hDataRetriever != nullptr;
}

void CDataRetriever::FreeDataRetrieverDLL()
{
    if (m_bLoaded)
        FreeLibrary(m_hDataRetriever);
    m_hDataRetriever = nullptr;
    m_bLoaded = FALSE;
}
