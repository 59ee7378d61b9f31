#pragma once

/// Turns the event loop and lets the worker thread do what it is given, until nothing more is due.
/// The two take turns, so that the order of events does not hang on how fast a thread is.
void settleAll();

/// The same with a worker thread that is held up once it has had so many turns.
void settleWithSlowWorker(int turns);
