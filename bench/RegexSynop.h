#pragma once

#include "aviation/Synop.h"

#include <string>

/// The SYNOP chain in its plainest form: std::wregex objects that are built once, a working text
/// that is erased from the front and trimmed. The baseline of the decoder's benchmark. Only for
/// short lines: std::wregex needs stack for each character.
struct RegexSynop
{
    int status = 0;
    std::wstring icao;
    std::wstring name;
    aviation::Position position;
    aviation::weather::SurfaceValues surface;
    aviation::weather::SynopValues synop;
};

RegexSynop decodeSynopByRegex(const std::wstring& reportText);
