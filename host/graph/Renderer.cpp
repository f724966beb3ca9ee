return made;
}

Results Renderer::Make(Visit const& visit)
{
    // Without a job frames come as somebody looks at them, and history is what was seen.
    return visit.op.KeepsHistory() && !jobFrames_.empty() ? MakeInOrder(visit) : MakeFrame(visit);
}

/// The frames of the job before this one come first, whatever order they are asked in, so that a result does
/// not depend on who asked for what before.
Results Renderer::MakeInOrder(Visit const& visit)
{
    State& state = StateOf(visit.op);
    std::lock_guard guard(state.ordered);
    if (state.latestTime == visit.time) return state.latest;
