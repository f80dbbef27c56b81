// A module that can be loaded and is no renderer.
extern "C" int registersNothing()
{
    return 0;
}
