namespace Quorvex.Tessaport.API;

public partial class TessaportService
{
    public IEnumerable<Item> GetChildFolders(ItemId folder) => List(folder, view => view.IsFolder, nameof(GetChildFolders));

    public IEnumerable<Item> GetFolderContents(ItemId folder) => List(folder, _ => true, nameof(GetFolderContents));

    private static List<Item> List(ItemId folder, Predicate<ItemView> isWanted, string method)
    {
        var place = RequestScope.Begin(method).PlaceOf(folder);
        FolderListing.RequireFolder(ItemView.At(place.Drive, place.Path));
        var items = new List<Item>();
        foreach (var view in FolderListing.Read(place.Drive, place.Path))
        {
            if (isWanted(view))
                items.Add(view.ToItem());
        }
        return items;
    }
}
