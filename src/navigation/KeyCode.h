#pragma once

// The phone's hardware keys that screens react to. The frame maps the keyboard onto
// them: the volume keys, Page Up / Page Down and '+' / '-' are the side keys.
enum KeyCode {
    KEY_INVALID = 0,
    KEY_SIDE_UP = 1,
    KEY_SIDE_DOWN = 2,
};
