/* The interface between this suite and the data-retriever library, for both sides; plain C.

   The library keeps whether the user takes part in the collection of usage data. CDataRetriever loads it for one
   question and frees it again. It exports two functions: */
#pragma once

enum ParticipationLevel
{
    PARTICIPATION_TAKES_PART = 2,
    PARTICIPATION_DECLINED = 3
};

/* "QueryParticipationLevel": the level; any other number when the user has not been asked. */
typedef int (*QueryParticipationLevelFunction)(void);
/* "SetParticipationLevel": remembers a level; 1 on success. */
typedef int (*SetParticipationLevelFunction)(int);
