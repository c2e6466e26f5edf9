// The headers that every test includes are compiled once, with this file.
