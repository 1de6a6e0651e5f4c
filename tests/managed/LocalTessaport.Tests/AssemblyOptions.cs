// The home is found through the environment, which all tests of the process share.
[assembly: CollectionBehavior(DisableTestParallelization = true)]
