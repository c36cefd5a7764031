// frame_profile: the phases of a frame whose time is told apart.
#pragma once

enum FrameProfilePhase {
    PHASE_EVT,   // from the frame's boundary through the event queue
    PHASE_SWAP,  // the old screen's clean-up and the new one's set-up
    PHASE_FIX,   // all fixed steps
    PHASE_TICK,  // the screen's drawing and the fade
    PHASE_OVL,   // overlays
    PHASE_PANEL, // the profiler panel while it is shown
    PHASE_PRES,  // presenting
    PHASE_SLEEP, // the frame-rate wait
    PHASE_COUNT,
};
