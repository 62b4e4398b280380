#include "aviation/SynopPatterns.h"
#include "tests/aviation/PatternContestants.h"

using namespace aviation::weather;

void addSynopPatterns(Contestants& all)
{
    addFront<synoppatterns::AllSynopPatterns>(all);
}
