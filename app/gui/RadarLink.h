#pragma once

class Controller;
class WidgetRadar;

/// Has the simulator's side answer the radar's requests. Both may go at any time.
void connectRadar(WidgetRadar& radar, Controller& controller);
