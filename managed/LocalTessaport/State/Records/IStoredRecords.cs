namespace Quorvex.Tessaport.API.Local;

/// <summary>Records that were read from a file and never change. The same record may be handed out as different objects.</summary>
internal interface IStoredRecords<TKey, TRecord> where TRecord : class
{
    int Count { get; }

    TRecord? Find(TKey key);

    IEnumerable<TRecord> All();
}
