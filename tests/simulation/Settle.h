#pragma once

/// Turns the event loop and lets the worker thread do what it is given, until nothing more is due.
/// The two take turns, so that the order of events does not hang on how fast a thread is.
void settleAll();

/// The same without the worker thread, which is held up until the next settleAll().
void settleWithoutWorker();
