#pragma once

class QDialog;

/// Takes the style's own pictures off the standard buttons of a dialog (OK, Cancel...); beside the
/// program's icons they look like strangers. To be called once all buttons are there.
void usePlainButtons(QDialog& dialog);
