#include "aviation/GribPatterns.h"
#include "tests/aviation/PatternContestants.h"

using namespace aviation::weather;

void addGribPatterns(Contestants& all)
{
    addFront<gribpatterns::AllGribPatterns>(all);
}
