#include "aviation/MetarPatterns.h"
#include "tests/aviation/PatternContestants.h"

using namespace aviation::weather;

void addMetarPatterns(Contestants& all)
{
    addFront<metarpatterns::FrontPatterns>(all);
    addSearched<metarpatterns::SearchedPatterns>(all);
}
