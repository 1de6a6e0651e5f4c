#nullable disable
namespace Quorvex.Tessaport.API;

/// <summary>Names an item for as long as the sync application runs; only the service that made it can read it.</summary>
public partial class ItemId
{
}
