// The plug-in's entry points come with tavoClient's meta-object; this file only makes the library.
