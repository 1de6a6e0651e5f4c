namespace Quorvex.Tessaport.API;

public partial class TessaportService
{
    public IEnumerable<PropertyDefinition> GetPropertyDefinitions(Guid driveId) =>
        PropertyCatalog.Of(RequestScope.Begin().DriveOf(driveId)).Select(property => property.ToDefinition()).ToList();

    public PropertyValues GetProperties(List<ItemId> ids, List<string> propertyDefinitionIds)
    {
        ArgumentNullException.ThrowIfNull(ids);
        ArgumentNullException.ThrowIfNull(propertyDefinitionIds);
        var request = RequestScope.Begin();
        var properties = propertyDefinitionIds.Select(PropertyCatalog.Find).OfType<Property>().ToList();
        if (properties.TrueForAll(property => property.InId is not null))
            return new PropertyValues { Values = PropertyReader.ReadFromIds(request, ids, properties) };
        using var drives = new OpenedDrives();
        var (views, actions) = (new List<ItemView>(ids.Count), new List<string?>(ids.Count));
        // A loop: of queries over structs of this assembly, the runtime has no code in advance.
        foreach (var id in ids)
        {
            if (request.TryPlaceOf(id) is not { } place || (place.Drive.Offline && place.Path.Length > 0))
                continue;
            var view = ItemView.ToDescribe(drives.At(place));
            if (!view.Exists && !view.IsRoot)
                continue;
            views.Add(view);
            actions.Add(id.Action);
        }
        return new PropertyValues { Values = PropertyReader.Read(request, views, actions, properties) };
    }
}
