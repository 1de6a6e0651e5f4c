// The home is found through the environment, of which a process has one.
[assembly: CollectionBehavior(DisableTestParallelization = true)]
