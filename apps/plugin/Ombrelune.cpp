// The plug-in has no code of its own: loading it runs the registrations of the tool libraries linked into it,
// and unloading takes them back. A module target wants one source file; this is it.
