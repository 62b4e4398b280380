#include "tests/aviation/PatternContestants.h"

using aviation::pattern::Pattern;

namespace {

using OtherPatterns =
    aviation::pattern::PatternList<Pattern<L"^((A)|(AB)|(ABC))">, Pattern<L"^((A)|(AB))C">,
                                   Pattern<L"^([A-Z]*)([A-Z]{2})([A-Z]{0,3})Z">,
                                   Pattern<L"^(A[0-9]){1,3}B?">, Pattern<L"^[A-Za_Z]+">,
                                   Pattern<L"^[!A-z]+">, Pattern<L"^[A-Z]*">,
                                   Pattern<L"^(A|^(B))(C|^D)?">>;

} // namespace

void addOtherPatterns(Contestants& all)
{
    addFront<OtherPatterns>(all);
}
